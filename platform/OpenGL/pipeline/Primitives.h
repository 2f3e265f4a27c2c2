// OpenGL's primitives as triangles.
#pragma once

#include "Canvas.h"

#include <GL/gl.h>

#include <span>
#include <vector>

namespace opengl {

/// What lines and points are widened by.
struct Widths {
    float line = 1;  ///< pixels
    float point = 1; ///< pixels
    float viewportWidth = 1;
    float viewportHeight = 1;
};

/// Appends what @p vertices are between glBegin(@p mode) and glEnd to @p triangles, three vertices
/// each. Lines and points become quads that cover the pixels that OpenGL has them cover.
void AppendTriangles(GLenum mode, std::span<const Vertex> vertices, const Widths& widths,
                     std::vector<Vertex>& triangles);

} // namespace opengl
