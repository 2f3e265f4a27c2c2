// A texture so small that a test can say where each of its texels has to be seen.
#pragma once

#include "Picture.h"

#include <GL/gl.h>

namespace gltest {

/// Makes and binds one of two by two texels, the first row first, unfiltered. Returns its name.
GLuint BindNewTexture(const Rgba (&texels)[4]);

} // namespace gltest
