#include "Lighting.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace opengl {

static constexpr std::size_t channels = 3; // without alpha

static Vector3 Divided(const Vector4& position) {
    const float w = position[3];
    return {position[0] / w, position[1] / w, position[2] / w};
}

static Vector3 DirectionTo(const Light& light, const Vector4& position) {
    if (light.position[3] == 0.0F) {
        return Normalized({light.position[0], light.position[1], light.position[2]});
    }
    return Normalized(Difference(Divided(light.position), Divided(position)));
}

static bool IsInSpot(const Light& light, const Vector3& toLight) {
    if (light.spotCutoffDegrees == 180.0F) {
        return true;
    }
    const Vector3 fromLight = {-toLight[0], -toLight[1], -toLight[2]};
    const double cosine =
        std::cos(static_cast<double>(light.spotCutoffDegrees) * (std::numbers::pi / 180));
    return static_cast<double>(Dot(fromLight, Normalized(light.spotDirection))) >= cosine;
}

static void Add(Colour& sum, const Colour& light, const Colour& material, float factor) {
    for (std::size_t i = 0; i < channels; ++i) {
        sum[i] += light[i] * material[i] * factor;
    }
}

static void AddLight(Colour& sum, const Light& light, const Material& material,
                     const Vector4& position, const Vector3& normal) {
    const Vector3 toLight = DirectionTo(light, position);
    if (!IsInSpot(light, toLight)) {
        return;
    }
    Add(sum, light.ambient, material.ambient, 1);
    const float facing = Dot(normal, toLight);
    if (facing <= 0.0F) {
        return;
    }
    Add(sum, light.diffuse, material.diffuse, facing);
    // The viewer is infinitely far on the z axis, as GL_LIGHT_MODEL_LOCAL_VIEWER is off.
    const Vector3 half = Normalized({toLight[0], toLight[1], toLight[2] + 1});
    const float shine = Dot(normal, half);
    if (shine > 0.0F) {
        Add(sum, light.specular, material.specular, std::pow(shine, material.shininess));
    }
}

Lighting::Lighting() {
    lights[0].diffuse = {1, 1, 1, 1};
    lights[0].specular = {1, 1, 1, 1};
}

Colour Lighting::At(const Vector4& position, const Vector3& normal) const {
    Colour sum = material.emission;
    Add(sum, ambient, material.ambient, 1);
    for (const Light& light : lights) {
        if (light.enabled) {
            AddLight(sum, light, material, position, normal);
        }
    }
    sum[3] = material.diffuse[3];
    return sum;
}

} // namespace opengl
