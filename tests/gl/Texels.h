// A texture so small that a test can say where each texel must appear.
#pragma once

#include "Picture.h"

#include <GL/gl.h>

namespace gltest {

/// Makes and binds one of two by two texels, first row first, unfiltered. Returns its name.
GLuint BindNewTexture(const Rgba (&texels)[4]);

} // namespace gltest
