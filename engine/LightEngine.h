// One fixed-function light and the material that goes with it.
#pragma once

#include "BaseEngine.h"

namespace engine {

class LightEngine : public BaseEngine {
public:
    LightEngine();

    /// Sets light and material in OpenGL; the current model-view matrix transforms the position.
    /// Does not change GL_LIGHTING. Needs a current OpenGL context.
    void ActivateLight();

    float position[4]; ///< homogeneous
    float specular[4]; ///< colours: red, green, blue, alpha, 0..1
    float materialSpecular[4];
    float ambient[4];       ///< of the light model; also the light's diffuse colour
    float spotDirection[3]; ///< OpenGL's default, not passed to it
};

} // namespace engine
