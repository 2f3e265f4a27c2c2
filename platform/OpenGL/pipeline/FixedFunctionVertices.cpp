// From glBegin to glEnd: vertices are transformed and lit, and added to the batch.
#include "FixedFunction.h"

#include "Primitives.h"

#include <algorithm>
#include <cmath>

namespace opengl {

// Of 44 bytes each: 2.9 MB.
static constexpr std::size_t mostBatchVertices = 65536;

DrawState FixedFunction::StateOfNow() const {
    DrawState state;
    state.viewport = viewport;
    const Texture& texture = textures.at(boundTexture);
    // One without a picture, or without the smaller ones that its filter needs, is as if off.
    if (texturing && texture.hasImage &&
        (texture.sampling.minFilter == GL_NEAREST || texture.sampling.minFilter == GL_LINEAR)) {
        state.texture = boundTexture;
        state.sampling = texture.sampling;
    }
    if (blend) {
        state.blendSource = blendSource;
        state.blendDestination = blendDestination;
    }
    if (depthTest) {
        state.depthTest = 1;
        state.depthFunction = depthFunction;
    }
    if (alphaTest) {
        state.alphaFunction = alphaFunction;
        state.alphaReference = alphaReference;
    }
    return state;
}

void FixedFunction::PrepareTransforms() {
    modelViewProjection = projection.Top() * modelView.Top();
    if (lightingEnabled || generated[0].enabled || generated[1].enabled) {
        normalTransform = NormalTransform(modelView.Top());
    }
}

void FixedFunction::Begin(GLenum mode) {
    if (IsOutsideBegin() && RaiseUnless(mode <= GL_POLYGON, GL_INVALID_ENUM)) {
        primitive = mode;
        primitiveState = StateOfNow();
        PrepareTransforms();
    }
}

void FixedFunction::End() {
    if (!RaiseUnless(primitive != outside, GL_INVALID_OPERATION)) {
        return;
    }
    if (primitiveState != batchState || batch.size() > mostBatchVertices) {
        DrawBatch();
        batchState = primitiveState;
    }
    const Widths widths = {.line = lineWidth,
                           .point = pointSize,
                           .viewportWidth = static_cast<float>(viewport.width),
                           .viewportHeight = static_cast<float>(viewport.height)};
    AppendTriangles(primitive, primitiveVertices, widths, batch);
    primitiveVertices.clear();
    primitive = outside;
}

void FixedFunction::SetNormal(float x, float y, float z) {
    current.normal = {x, y, z};
}

void FixedFunction::SetTexCoord(float s, float t) {
    current.texCoord = {s, t};
}

void FixedFunction::SetColor(float red, float green, float blue) {
    current.colour = {red, green, blue, 1};
    FollowColour();
}

void FixedFunction::PushAttrib(GLbitfield groups) {
    constexpr std::size_t mostSaved = 16;
    if (IsOutsideBegin() && RaiseUnless(groups == GL_CURRENT_BIT, GL_INVALID_VALUE) &&
        RaiseUnless(savedAttributes.size() < mostSaved, GL_STACK_OVERFLOW)) {
        savedAttributes.push_back(current);
    }
}

void FixedFunction::PopAttrib() {
    if (IsOutsideBegin() && RaiseUnless(!savedAttributes.empty(), GL_STACK_UNDERFLOW)) {
        current = savedAttributes.back();
        savedAttributes.pop_back();
        FollowColour();
    }
}

Vector3 FixedFunction::EyeNormal() const {
    const Vector3 transformed = normalTransform * current.normal;
    return normalize ? Normalized(transformed) : transformed;
}

Colour FixedFunction::ColourOf(const Vector4& eyePosition) const {
    Colour shown = lightingEnabled ? lighting.At(eyePosition, EyeNormal()) : current.colour;
    for (float& channel : shown) {
        channel = std::clamp(channel, 0.0F, 1.0F);
    }
    return shown;
}

/// Where the direction from the eye, reflected, meets a picture of the surroundings.
static std::array<float, 2> SphereMap(const Vector4& eyePosition, const Vector3& normal) {
    const Vector3 view = Normalized({eyePosition[0], eyePosition[1], eyePosition[2]});
    const float twice = 2 * Dot(normal, view);
    const Vector3 reflected = {view[0] - twice * normal[0], view[1] - twice * normal[1],
                               view[2] - twice * normal[2] + 1};
    const float scale = 2 * std::sqrt(Dot(reflected, reflected));
    if (scale == 0.0F) {
        return {0.5F, 0.5F}; // straight away from the eye: anywhere on the rim
    }
    return {reflected[0] / scale + 0.5F, reflected[1] / scale + 0.5F};
}

Vector3 FixedFunction::TextureOf(const Vector4& position, const Vector4& eyePosition) const {
    Vector4 place = {current.texCoord[0], current.texCoord[1], 0, 1};
    const bool mirrors =
        std::any_of(generated.begin(), generated.end(), [](const auto& coordinate) {
            return coordinate.enabled && coordinate.mode == GL_SPHERE_MAP;
        });
    const auto mirrored = mirrors ? SphereMap(eyePosition, EyeNormal()) : current.texCoord;
    for (std::size_t i = 0; i < generated.size(); ++i) {
        if (generated[i].enabled) {
            place[i] = generated[i].mode == GL_SPHERE_MAP   ? mirrored[i]
                       : generated[i].mode == GL_EYE_LINEAR ? eyePosition[i]
                                                            : position[i];
        }
    }
    const Vector4 transformed = textureMatrices.Top() * place;
    return {transformed[0], transformed[1], transformed[3]};
}

void FixedFunction::PlaceVertex(float x, float y, float z) {
    if (primitive == outside) {
        return; // belongs to nothing
    }
    const Vector4 position = {x, y, z, 1};
    const Vector4 eyePosition = modelView.Top() * position;
    primitiveVertices.push_back({.position = modelViewProjection * position,
                                 .colour = ColourOf(eyePosition),
                                 .texture = TextureOf(position, eyePosition)});
}

} // namespace opengl
