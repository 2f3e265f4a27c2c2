// Lights, materials and textures of the fixed-function pipeline.
#include "FixedFunction.h"

#include <algorithm>

namespace opengl {

static Colour FourValues(const float* values) {
    return {values[0], values[1], values[2], values[3]};
}

void FixedFunction::LightModel(GLenum parameter, const float* values) {
    if (IsOutsideBegin() && RaiseUnless(parameter == GL_LIGHT_MODEL_AMBIENT, GL_INVALID_ENUM)) {
        lighting.ambient = FourValues(values);
    }
}

static bool IsSpotCutoff(float degrees) {
    return (degrees >= 0 && degrees <= 90) || degrees == 180;
}

void FixedFunction::SetLight(GLenum light, GLenum parameter, const float* values, int count) {
    if (!IsOutsideBegin() || !RaiseUnless(light >= GL_LIGHT0 && light < GL_LIGHT0 + lightCount &&
                                              (count > 1 || parameter == GL_SPOT_CUTOFF),
                                          GL_INVALID_ENUM)) {
        return;
    }
    Light& changed = lighting.lights[light - GL_LIGHT0];
    switch (parameter) {
    case GL_AMBIENT:
        changed.ambient = FourValues(values);
        break;
    case GL_DIFFUSE:
        changed.diffuse = FourValues(values);
        break;
    case GL_SPECULAR:
        changed.specular = FourValues(values);
        break;
    case GL_POSITION:
        changed.position = modelView.Top() * FourValues(values);
        break;
    case GL_SPOT_CUTOFF:
        if (RaiseUnless(IsSpotCutoff(values[0]), GL_INVALID_VALUE)) {
            changed.spotCutoffDegrees = values[0];
        }
        break;
    default:
        Raise(GL_INVALID_ENUM);
    }
}

static bool IsFace(GLenum face) {
    return face == GL_FRONT || face == GL_BACK || face == GL_FRONT_AND_BACK;
}

static bool IsMaterialColour(GLenum parameter) {
    return parameter == GL_AMBIENT || parameter == GL_DIFFUSE || parameter == GL_SPECULAR ||
           parameter == GL_EMISSION || parameter == GL_AMBIENT_AND_DIFFUSE;
}

static void SetMaterialColour(Material& material, GLenum parameter, const Colour& colour) {
    if (parameter == GL_AMBIENT || parameter == GL_AMBIENT_AND_DIFFUSE) {
        material.ambient = colour;
    }
    if (parameter == GL_DIFFUSE || parameter == GL_AMBIENT_AND_DIFFUSE) {
        material.diffuse = colour;
    }
    if (parameter == GL_SPECULAR) {
        material.specular = colour;
    }
    if (parameter == GL_EMISSION) {
        material.emission = colour;
    }
}

// Also between Begin and End.
void FixedFunction::SetMaterial(GLenum face, GLenum parameter, const float* values, int count) {
    const bool isColour = count > 1 && IsMaterialColour(parameter);
    if (!RaiseUnless(IsFace(face) && (isColour || parameter == GL_SHININESS), GL_INVALID_ENUM)) {
        return;
    }
    if (!isColour && !RaiseUnless(values[0] >= 0 && values[0] <= 128, GL_INVALID_VALUE)) {
        return;
    }
    if (face == GL_BACK) {
        return; // back faces are lit like front ones
    }
    if (isColour) {
        SetMaterialColour(lighting.material, parameter, FourValues(values));
        FollowColour(); // a property that tracks the colour keeps it
    } else {
        lighting.material.shininess = values[0];
    }
}

void FixedFunction::ColorMaterial(GLenum face, GLenum mode) {
    if (IsOutsideBegin() && RaiseUnless(IsFace(face) && IsMaterialColour(mode), GL_INVALID_ENUM)) {
        colourMaterialFront = face != GL_BACK;
        colourMaterialMode = mode;
        FollowColour();
    }
}

void FixedFunction::FollowColour() {
    if (colourMaterial && colourMaterialFront) {
        SetMaterialColour(lighting.material, colourMaterialMode, current.colour);
    }
}

// Textures.

void FixedFunction::TexGen(GLenum coordinate, GLenum parameter, GLint mode) {
    const auto newMode = static_cast<GLenum>(mode);
    if (IsOutsideBegin() &&
        RaiseUnless((coordinate == GL_S || coordinate == GL_T) &&
                        parameter == GL_TEXTURE_GEN_MODE &&
                        (newMode == GL_EYE_LINEAR || newMode == GL_OBJECT_LINEAR ||
                         newMode == GL_SPHERE_MAP),
                    GL_INVALID_ENUM)) {
        generated[coordinate - GL_S].mode = newMode;
    }
}

void FixedFunction::GenTextures(GLsizei count, GLuint* names) {
    if (IsOutsideBegin() && RaiseUnless(count >= 0, GL_INVALID_VALUE)) {
        for (GLuint* name = names; name != names + count; ++name) {
            *name = textures.rbegin()->first + 1;
            textures[*name] = {};
        }
    }
}

void FixedFunction::BindTexture(GLenum target, GLuint name) {
    if (IsOutsideBegin() && RaiseUnless(target == GL_TEXTURE_2D, GL_INVALID_ENUM)) {
        textures.try_emplace(name);
        boundTexture = name;
    }
}

static bool IsWrap(GLenum value) {
    return value == GL_CLAMP || value == GL_CLAMP_TO_EDGE || value == GL_REPEAT;
}

static bool IsFilter(GLenum value) {
    return value == GL_NEAREST || value == GL_LINEAR;
}

void FixedFunction::TexParameter(GLenum target, GLenum parameter, GLint value) {
    if (!IsOutsideBegin() || !RaiseUnless(target == GL_TEXTURE_2D, GL_INVALID_ENUM)) {
        return;
    }
    const auto newValue = static_cast<GLenum>(value);
    Sampling& sampling = textures[boundTexture].sampling;
    if (parameter == GL_TEXTURE_WRAP_S && IsWrap(newValue)) {
        sampling.wrapS = newValue;
    } else if (parameter == GL_TEXTURE_WRAP_T && IsWrap(newValue)) {
        sampling.wrapT = newValue;
    } else if (parameter == GL_TEXTURE_MIN_FILTER && IsFilter(newValue)) {
        sampling.minFilter = newValue;
    } else if (parameter == GL_TEXTURE_MAG_FILTER && IsFilter(newValue)) {
        sampling.magFilter = newValue;
    } else {
        Raise(GL_INVALID_ENUM);
    }
}

void FixedFunction::SetTextureHasImage() {
    textures[boundTexture].hasImage = true;
}

} // namespace opengl
