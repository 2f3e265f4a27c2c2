// The end of a frame, as OpenGL's part of it.
#pragma once

extern "C" {

/// Draws the frame; what both buffers were cleared after is left out. The browser shows it when the
/// present task ends.
void SkovraGlFinishFrame();
}
