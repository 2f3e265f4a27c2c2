// A real OpenGL context without a display, for the recorder and for tests.
#pragma once

#include <memory>

/// A fixed-function OpenGL context with an off-screen buffer of colour, alpha and depth, one sample
/// a pixel, current from construction to destruction in the thread that made it. Rendered in
/// software unless LIBGL_ALWAYS_SOFTWARE says otherwise. One at a time.
class OffscreenContext {
public:
    /// Sizes in pixels, >= 1. Throws std::runtime_error if no such context can be made.
    OffscreenContext(int width, int height);
    ~OffscreenContext();

    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

private:
    struct Handles;
    std::unique_ptr<Handles> handles;
};
