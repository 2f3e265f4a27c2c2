// One fixed-function light and the material that goes with it.
#pragma once

#include "BaseEngine.h"

namespace engine {

class LightEngine : public BaseEngine {
public:
    LightEngine();

    /// Hands light and material to OpenGL, the position through the current model-view matrix.
    /// GL_LIGHTING stays as it is. Needs a current OpenGL context.
    void ActivateLight();

    float position[4]; ///< homogeneous
    float specular[4]; ///< colours: red, green, blue, alpha, 0..1
    float materialSpecular[4];
    float ambient[4];       ///< of the light model; also the light's diffuse colour
    float spotDirection[3]; ///< OpenGL's default, not handed over
};

} // namespace engine
