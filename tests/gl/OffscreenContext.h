// A real OpenGL context without a display, for tests that look at what is drawn.
#pragma once

#include <memory>

namespace gltest {

/// A fixed-function OpenGL context with an off-screen buffer of colour, alpha and depth, current
/// from construction to destruction in the thread that made it. Drawn by software and in that
/// thread, unless LIBGL_ALWAYS_SOFTWARE and LP_NUM_THREADS say otherwise. One at a time.
class OffscreenContext {
public:
    /// Sizes in pixels, >= 1. Throws std::runtime_error where there is no such context.
    OffscreenContext(int width, int height);
    ~OffscreenContext();

    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

private:
    struct Handles;
    std::unique_ptr<Handles> handles;
};

} // namespace gltest
