// A real OpenGL context without a display: what is recorded is drawn there, and what tests look at.
#pragma once

#include <memory>

/// A fixed-function OpenGL context with an off-screen buffer of colour, alpha and depth, one sample
/// a pixel, current from construction to destruction in the thread that made it. Drawn by software
/// unless LIBGL_ALWAYS_SOFTWARE says otherwise. One at a time.
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
