// The colour that OpenGL's lights give to a vertex.
#pragma once

#include "Matrix.h"

#include <array>

namespace opengl {

/// Red, green, blue, alpha.
using Colour = std::array<float, 4>;

/// GL_LIGHTi. Places and directions are in eye coordinates.
struct Light {
    bool enabled = false;
    Colour ambient = {0, 0, 0, 1};
    Colour diffuse = {0, 0, 0, 1}; // white for GL_LIGHT0
    Colour specular = {0, 0, 0, 1};
    Vector4 position = {0, 0, 1, 0}; // w = 0: infinitely far in that direction
    Vector3 spotDirection = {0, 0, -1};
    float spotCutoffDegrees = 180; // 180: shines all round
};

/// GL_FRONT. Vertices of faces seen from behind are lit as if seen from the front.
struct Material {
    Colour ambient = {0.2F, 0.2F, 0.2F, 1};
    Colour diffuse = {0.8F, 0.8F, 0.8F, 1};
    Colour specular = {0, 0, 0, 1};
    Colour emission = {0, 0, 0, 1};
    float shininess = 0; // 0 to 128
};

inline constexpr int lightCount = 8;

struct Lighting {
    Lighting();

    /// The colour, not limited to 0 to 1, of a vertex that faces @p normal; both in eye
    /// coordinates.
    Colour At(const Vector4& position, const Vector3& normal) const;

    std::array<Light, lightCount> lights;
    Material material;
    Colour ambient = {0.2F, 0.2F, 0.2F, 1}; // of no light, but of the scene
};

} // namespace opengl
