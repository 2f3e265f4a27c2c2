#include "Canvas.h"

#include "Picture.h"

#include <GL/gl.h>
#include <GL/glext.h>

namespace record {

Canvas::Canvas(int width, int height) : context(width, height) {}

void Canvas::Use(bool drawn) const {
    (drawn ? glDisable : glEnable)(GL_RASTERIZER_DISCARD);
}

void Canvas::Read(Picture& picture) const {
    glReadPixels(0, 0, picture.width, picture.height, GL_RGBA, GL_UNSIGNED_BYTE,
                 picture.pixels.data());
}

} // namespace record
