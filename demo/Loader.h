// The start of the show, in the first frame, and the state that scenes share.
#pragma once

namespace engine {
class Box;
}

extern float rotate;       ///< degrees, advanced by the scenes
extern float globalAngle;  ///< horizontal offset of the picture, in picture widths
extern engine::Box* kasse; ///< the box; made by Loader, never deleted

/// Sets OpenGL up, loads the textures, makes the box, starts the music and sets `loaded`.
/// Call once. Needs `demo` with its music engine and a current OpenGL context.
void Loader();

/// Loads the three pictures, each under the name of its file; a missing one is stored as 0.
void LoadTextures();

/// Presents an empty frame. @p progress is not used.
void LoaderGraphics(int progress);
