// GLUT in a recording: the functions that the show calls, in virtual time.
#pragma once

#include <cstdint>
#include <functional>

namespace record {

/// What the show's window does. Exceptions of the functions end the main loop.
struct Window {
    int width; ///< whatever size the show requests
    int height;

    /// Opens the window: afterwards an OpenGL context is current.
    std::function<void()> open;

    /// Time advances to @p ms since the start, which is the window's first frame.
    std::function<void(std::int64_t ms)> pass;

    /// Before the drawing at @p ms: whether it will be @p seen, or replaced unseen.
    std::function<void(std::int64_t ms, bool seen)> prepare;

    /// Presents the last drawing as the frame at @p ms.
    std::function<void(std::int64_t ms)> show;
};

/// Call before the show's main.
void UseWindow(Window window);

} // namespace record
