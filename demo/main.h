// The demo's shared globals and how it ends.
#pragma once

namespace engine {
class DemoEngine;
}

extern engine::DemoEngine* demo; ///< set by main before anything else runs
extern int REF_MS_EXTERN;        ///< frame period in ms; 0 until main has armed the first timer
extern int loaded;               ///< 0 until the loader has run

/// Shows the cursor again and ends the process with status 0.
void Cleanup();

/// The keyboard callback: Escape ends the program, every other key is ignored.
void KeyboardFunc(unsigned char key, int x, int y);
