// What the show is drawn on: OpenGL without a window and without a display.
#include "Canvas.h"

#include "Picture.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace record {

namespace {

void Require(bool succeeded, const std::string& what) {
    if (!succeeded) {
        throw std::runtime_error("cannot draw: no " + what);
    }
}

EGLDisplay OpenDisplay() {
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 0); // the same pictures whatever the graphics card
    const EGLDisplay display =
        eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    Require(display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE,
            "OpenGL without a display");
    Require(eglBindAPI(EGL_OPENGL_API) == EGL_TRUE, "desktop OpenGL");
    return display;
}

/// As the show's window has it: one sample a pixel.
EGLConfig ChooseConfig(EGLDisplay display) {
    // clang-format off
    const EGLint wanted[] = {
        EGL_SURFACE_TYPE, EGL_PBUFFER_BIT,
        EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
        EGL_RED_SIZE, 8,
        EGL_GREEN_SIZE, 8,
        EGL_BLUE_SIZE, 8,
        EGL_ALPHA_SIZE, 8,
        EGL_DEPTH_SIZE, 24,
        EGL_SAMPLE_BUFFERS, 0,
        EGL_NONE};
    // clang-format on
    EGLConfig config = nullptr;
    EGLint count = 0;
    const bool chosen = eglChooseConfig(display, wanted, &config, 1, &count) == EGL_TRUE;
    Require(chosen && count == 1, "buffer of colour and depth");
    return config;
}

} // namespace

Canvas::Canvas(int width, int height) {
    const EGLDisplay display = OpenDisplay();
    const EGLConfig config = ChooseConfig(display);
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    const EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    Require(surface != EGL_NO_SURFACE,
            "buffer of " + std::to_string(width) + "x" + std::to_string(height) + " pixels");
    // Without a version asked for, the context is one with the fixed functions.
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    Require(context != EGL_NO_CONTEXT &&
                eglMakeCurrent(display, surface, surface, context) == EGL_TRUE,
            "fixed-function OpenGL");
    GLint largest[2] = {0, 0};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largest);
    Require(width <= largest[0] && height <= largest[1],
            "picture larger than " + std::to_string(largest[0]) + "x" + std::to_string(largest[1]));
}

void Canvas::Use(bool drawn) const {
    (drawn ? glDisable : glEnable)(GL_RASTERIZER_DISCARD);
}

void Canvas::Read(Picture& picture) const {
    glReadPixels(0, 0, picture.width, picture.height, GL_RGBA, GL_UNSIGNED_BYTE,
                 picture.pixels.data());
}

} // namespace record
