// The end of a frame, as OpenGL's part of it.
#pragma once

extern "C" {

/// Draws what was called for since the last call, or since both buffers were cleared after that.
/// Before the browser shows the canvas.
void SkovraGlFinishFrame();
}
