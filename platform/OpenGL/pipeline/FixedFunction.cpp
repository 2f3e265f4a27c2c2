// Errors, matrices, what is switched on and off, and the frame.
#include "FixedFunction.h"

#include <algorithm>

namespace opengl {

FixedFunction::FixedFunction(Canvas& newCanvas) : canvas(newCanvas) {}

void FixedFunction::Raise(GLenum newError) {
    if (error == GL_NO_ERROR) {
        error = newError;
    }
}

bool FixedFunction::RaiseUnless(bool condition, GLenum newError) {
    if (!condition) {
        Raise(newError);
    }
    return condition;
}

bool FixedFunction::IsOutsideBegin() {
    return RaiseUnless(primitive == outside, GL_INVALID_OPERATION);
}

GLenum FixedFunction::GetError() {
    if (!IsOutsideBegin()) {
        return GL_NO_ERROR;
    }
    const GLenum first = error;
    error = GL_NO_ERROR;
    return first;
}

// Matrices.

MatrixStack& FixedFunction::Stack() {
    switch (matrixMode) {
    case GL_PROJECTION:
        return projection;
    case GL_TEXTURE:
        return textureMatrices;
    default:
        return modelView;
    }
}

void FixedFunction::MatrixMode(GLenum mode) {
    if (IsOutsideBegin() &&
        RaiseUnless(mode == GL_MODELVIEW || mode == GL_PROJECTION || mode == GL_TEXTURE,
                    GL_INVALID_ENUM)) {
        matrixMode = mode;
    }
}

void FixedFunction::LoadIdentity() {
    if (IsOutsideBegin()) {
        Stack().Replace({});
    }
}

void FixedFunction::PushMatrix() {
    if (IsOutsideBegin() && !Stack().Push()) {
        Raise(GL_STACK_OVERFLOW);
    }
}

void FixedFunction::PopMatrix() {
    if (IsOutsideBegin() && !Stack().Pop()) {
        Raise(GL_STACK_UNDERFLOW);
    }
}

void FixedFunction::MultiplyMatrix(const Matrix& matrix) {
    if (IsOutsideBegin()) {
        Stack().Multiply(matrix);
    }
}

// Capabilities.

bool* FixedFunction::Capability(GLenum name) {
    switch (name) {
    case GL_ALPHA_TEST:
        return &alphaTest;
    case GL_BLEND:
        return &blend;
    case GL_COLOR_MATERIAL:
        return &colourMaterial;
    case GL_DEPTH_TEST:
        return &depthTest;
    case GL_LIGHTING:
        return &lightingEnabled;
    case GL_NORMALIZE:
        return &normalize;
    case GL_TEXTURE_2D:
        return &texturing;
    case GL_TEXTURE_GEN_S:
        return &generated[0].enabled;
    case GL_TEXTURE_GEN_T:
        return &generated[1].enabled;
    default:
        return name >= GL_LIGHT0 && name < GL_LIGHT0 + lightCount
                   ? &lighting.lights[name - GL_LIGHT0].enabled
                   : nullptr;
    }
}

void FixedFunction::SetCapability(GLenum name, bool enabled) {
    if (!IsOutsideBegin()) {
        return;
    }
    bool* const capability = Capability(name);
    if (RaiseUnless(capability != nullptr, GL_INVALID_ENUM)) {
        *capability = enabled;
        FollowColour();
    }
}

void FixedFunction::Enable(GLenum capability) {
    SetCapability(capability, true);
}

void FixedFunction::Disable(GLenum capability) {
    SetCapability(capability, false);
}

GLboolean FixedFunction::IsEnabled(GLenum name) {
    if (!IsOutsideBegin()) {
        return GL_FALSE;
    }
    const bool* const capability = Capability(name);
    if (!RaiseUnless(capability != nullptr, GL_INVALID_ENUM)) {
        return GL_FALSE;
    }
    return *capability ? GL_TRUE : GL_FALSE;
}

// State.

static bool IsComparison(GLenum function) {
    return function >= GL_NEVER && function <= GL_ALWAYS;
}

static bool IsBlendFactor(GLenum factor) {
    return factor == GL_ZERO || factor == GL_ONE ||
           (factor >= GL_SRC_COLOR && factor <= GL_SRC_ALPHA_SATURATE);
}

void FixedFunction::BlendFunc(GLenum source, GLenum destination) {
    if (IsOutsideBegin() &&
        RaiseUnless(IsBlendFactor(source) && IsBlendFactor(destination), GL_INVALID_ENUM)) {
        blendSource = source;
        blendDestination = destination;
    }
}

void FixedFunction::DepthFunc(GLenum function) {
    if (IsOutsideBegin() && RaiseUnless(IsComparison(function), GL_INVALID_ENUM)) {
        depthFunction = function;
    }
}

void FixedFunction::AlphaFunc(GLenum function, float reference) {
    if (IsOutsideBegin() && RaiseUnless(IsComparison(function), GL_INVALID_ENUM)) {
        alphaFunction = function;
        alphaReference = std::clamp(reference, 0.0F, 1.0F);
    }
}

void FixedFunction::Hint(GLenum target, GLenum mode) {
    if (IsOutsideBegin()) { // perspective is always correct
        RaiseUnless(target == GL_PERSPECTIVE_CORRECTION_HINT &&
                        (mode == GL_DONT_CARE || mode == GL_FASTEST || mode == GL_NICEST),
                    GL_INVALID_ENUM);
    }
}

void FixedFunction::LineWidth(float width) {
    if (IsOutsideBegin() && RaiseUnless(width > 0, GL_INVALID_VALUE)) {
        lineWidth = width;
    }
}

void FixedFunction::PointSize(float size) {
    if (IsOutsideBegin() && RaiseUnless(size > 0, GL_INVALID_VALUE)) {
        pointSize = size;
    }
}

void FixedFunction::SetViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    if (IsOutsideBegin() && RaiseUnless(width >= 0 && height >= 0, GL_INVALID_VALUE)) {
        viewport = {.x = x, .y = y, .width = width, .height = height};
    }
}

// The frame.

void FixedFunction::ClearColor(float red, float green, float blue, float alpha) {
    if (IsOutsideBegin()) {
        clearValues.colour = {red, green, blue, alpha};
    }
}

void FixedFunction::ClearDepth(double depth) {
    if (IsOutsideBegin()) {
        clearValues.depth = static_cast<float>(std::clamp(depth, 0.0, 1.0));
    }
}

void FixedFunction::Clear(GLbitfield buffers) {
    constexpr GLbitfield known = GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT;
    if (IsOutsideBegin() && RaiseUnless((buffers & ~known) == 0, GL_INVALID_VALUE)) {
        DrawBatch();
        clearValues.buffers = buffers;
        canvas.Clear(clearValues);
    }
}

void FixedFunction::DrawBatch() {
    if (!batch.empty()) {
        canvas.Draw(batchState, batch);
        batch.clear();
    }
}

void FixedFunction::FinishFrame() {
    DrawBatch();
}

} // namespace opengl
