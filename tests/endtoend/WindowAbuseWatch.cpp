// Preloaded into a program that draws: asks OpenGL, each time a frame is presented, what went wrong
// in it and which viewport it was drawn in.
//
// The file $FRAME_WATCH gets a line "viewport WIDTH HEIGHT" whenever it is another than before, and
// a line "error 0x502" for each error.
#include "Log.h"

#include <GL/gl.h>
#include <GL/glx.h>

#include <array>

#include <dlfcn.h>

namespace {

using Viewport = std::array<GLint, 4>;

void WriteWhatIsNew() {
    static std::FILE* const log = OpenLog("FRAME_WATCH");
    static Viewport last{};
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        std::fprintf(log, "error 0x%x\n", error);
    }
    Viewport now{};
    glGetIntegerv(GL_VIEWPORT, now.data());
    if (now != last) {
        std::fprintf(log, "viewport %d %d\n", now[2], now[3]);
        last = now;
    }
}

} // namespace

extern "C" void glXSwapBuffers(Display* display, GLXDrawable drawable) {
    using Swap = void (*)(Display*, GLXDrawable);
    static const auto swap = reinterpret_cast<Swap>(dlsym(RTLD_NEXT, "glXSwapBuffers"));
    WriteWhatIsNew();
    swap(display, drawable);
}
