// Opens the display and keeps the projection right when its size changes.
#pragma once

#include <string>

namespace engine {

/// Opens a window of @p width by @p height pixels at (@p x, @p y), titled @p title; or, if
/// @p fullScreen, the whole display at its current resolution with the cursor hidden, for which
/// size, position and title are not used. @p displayMode: GLUT_RGBA and the like. Needs glutInit.
void BootGLUT(int displayMode, int width, int height, int x, int y, bool fullScreen,
              const std::string& title);

/// The reshape callback, in pixels: viewport over the whole window, 45 degrees vertical field of
/// view, near 1, far 2500; model-view matrix selected.
void ReSizeGLScene(int width, int height);

} // namespace engine
