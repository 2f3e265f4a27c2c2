// What the fixed-function pipeline draws on: triangles in clip coordinates.
#pragma once

#include "Lighting.h"
#include "Matrix.h"

#include <GL/gl.h>

#include <span>

namespace opengl {

/// A vertex that is transformed and lit.
struct Vertex {
    Vector4 position; ///< clip coordinates
    Colour colour;    ///< 0 to 1
    Vector3 texture;  ///< s, t and q: the place in the picture is s / q, t / q
};

/// Pixels, y up.
struct Viewport {
    GLint x = 0;
    GLint y = 0;
    GLsizei width = 0;
    GLsizei height = 0;

    bool operator==(const Viewport&) const = default;
};

/// How a picture is read beyond its edges and between its pixels.
struct Sampling {
    GLenum wrapS = GL_REPEAT;
    GLenum wrapT = GL_REPEAT;
    GLenum minFilter = GL_NEAREST_MIPMAP_LINEAR;
    GLenum magFilter = GL_LINEAR;

    bool operator==(const Sampling&) const = default;
};

/// How triangles are drawn. What is off has its default, so that equal states compare equal.
struct DrawState {
    GLuint texture = 0; ///< colours are multiplied by its picture's; 0: they are not
    Sampling sampling;
    GLenum blendSource = GL_ONE; ///< GL_ONE and GL_ZERO: no blending
    GLenum blendDestination = GL_ZERO;
    GLenum depthFunction = GL_ALWAYS; ///< when the depth test is off, no depth is written, either
    GLenum alphaFunction = GL_ALWAYS;
    GLfloat alphaReference = 0;
    GLuint depthTest = 0; ///< 1: on
    Viewport viewport;

    bool operator==(const DrawState&) const = default;
};

/// The buffers and values of a glClear.
struct ClearValues {
    GLbitfield buffers = 0; ///< GL_COLOR_BUFFER_BIT, GL_DEPTH_BUFFER_BIT
    Colour colour = {0, 0, 0, 0};
    GLfloat depth = 1;
};

class Canvas {
public:
    Canvas() = default;
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    virtual ~Canvas() = default;

    virtual void Clear(const ClearValues& values) = 0;

    /// Three vertices a triangle.
    virtual void Draw(const DrawState& state, std::span<const Vertex> vertices) = 0;
};

} // namespace opengl
