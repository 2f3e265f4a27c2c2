// A real OpenGL context without a display, through EGL's surfaceless platform.
#include "OffscreenContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

struct OffscreenContext::Handles {
    Handles() = default;
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;

    ~Handles() {
        eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        if (context != EGL_NO_CONTEXT) {
            eglDestroyContext(display, context);
        }
        if (surface != EGL_NO_SURFACE) {
            eglDestroySurface(display, surface);
        }
    }

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface surface = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
};

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
    return display;
}

// Stays open as long as the process: closing it would unload the driver.
EGLDisplay Display() {
    static const EGLDisplay display = OpenDisplay();
    return display;
}

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

OffscreenContext::OffscreenContext(int width, int height) : handles(std::make_unique<Handles>()) {
    handles->display = Display();
    Require(eglBindAPI(EGL_OPENGL_API) == EGL_TRUE, "desktop OpenGL");
    const EGLConfig config = ChooseConfig(handles->display);
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    handles->surface = eglCreatePbufferSurface(handles->display, config, size);
    Require(handles->surface != EGL_NO_SURFACE,
            "buffer of " + std::to_string(width) + "x" + std::to_string(height) + " pixels");
    // If no version is requested, the context has the fixed-function pipeline.
    handles->context = eglCreateContext(handles->display, config, EGL_NO_CONTEXT, nullptr);
    Require(handles->context != EGL_NO_CONTEXT &&
                eglMakeCurrent(handles->display, handles->surface, handles->surface,
                               handles->context) == EGL_TRUE,
            "fixed-function OpenGL");
    GLint largest[2] = {0, 0};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, largest);
    Require(width <= largest[0] && height <= largest[1],
            "picture larger than " + std::to_string(largest[0]) + "x" + std::to_string(largest[1]));
}

OffscreenContext::~OffscreenContext() = default;
