// GLUT in a recording: as much of it as the show calls, in virtual time.
#pragma once

#include <cstdint>
#include <functional>

namespace record {

/// What is behind the show's window. The functions' exceptions end the main loop.
struct Window {
    int width; ///< whatever size the show asks for
    int height;

    /// The window is being made: afterwards an OpenGL context is current.
    std::function<void()> open;

    /// Time passes: @p ms since the start, which is the window's first picture.
    std::function<void(std::int64_t ms)> pass;

    /// What is drawn next, at @p ms, is for the viewer's eyes, or is drawn over unseen.
    std::function<void(std::int64_t ms, bool seen)> prepare;

    /// What was drawn last is to be seen at @p ms.
    std::function<void(std::int64_t ms)> show;
};

/// To be called before the show's main.
void UseWindow(Window window);

} // namespace record
