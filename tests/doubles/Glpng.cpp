#include "Glpng.h"

#include "Effects.h"

#include <GL/gl.h>

namespace doubles {

GlpngScript glpng;

namespace {

Word Value(int value) {
    switch (value) {
    case GL_REPEAT:
        return {"GL_REPEAT"};
    case GL_LINEAR:
        return {"GL_LINEAR"};
    default:
        return {std::to_string(value)};
    }
}

} // namespace

} // namespace doubles

unsigned int pngBind(const char* filename, int mipmap, int transparency, pngInfo* info,
                     int wrapMode, int minFilter, int magFilter) {
    using namespace doubles;
    Record("pngBind", filename,
           Word{mipmap == PNG_NOMIPMAPS ? "PNG_NOMIPMAPS" : std::to_string(mipmap)},
           Word{transparency == PNG_ALPHA ? "PNG_ALPHA" : std::to_string(transparency)},
           Word{info == nullptr ? "null" : "info"}, Value(wrapMode), Value(minFilter),
           Value(magFilter));
    const unsigned int name = glpng.nextName++; // also when the load fails
    if (*filename == '\0' || glpng.corrupt.contains(filename)) {
        return 0;
    }
    if (info != nullptr) {
        *info = glpng.info;
    }
    return name;
}
