// A recorder that makes pixels of everything the show draws, also of what nobody sees.
#include <GL/gl.h>
#include <GL/glext.h>

// The names that the linker's --wrap gives to glEnable and to its stand-in.
extern "C" {
void __real_glEnable(GLenum what);
void __wrap_glEnable(GLenum what);
}

void __wrap_glEnable(GLenum what) {
    if (what != GL_RASTERIZER_DISCARD) {
        __real_glEnable(what);
    }
}
