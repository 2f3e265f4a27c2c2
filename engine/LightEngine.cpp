#include "LightEngine.h"

#include <GL/gl.h>

namespace engine {

LightEngine::LightEngine()
    : position{0.0F, 50.0F, 0.0F, 1.0F}, specular{1.0F, 1.0F, 1.0F, 1.0F},
      materialSpecular{1.0F, 1.0F, 1.0F, 1.0F}, ambient{0.5F, 0.5F, 0.5F, 1.0F},
      spotDirection{0.0F, 0.0F, -1.0F} {}

void LightEngine::ActivateLight() {
    glDisable(GL_LIGHT0);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, ambient); // one grey for both, on purpose
    glLightfv(GL_LIGHT0, GL_SPECULAR, specular);
    glLightfv(GL_LIGHT0, GL_POSITION, position);
    glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 60.0F);
    glEnable(GL_LIGHT0);
    glEnable(GL_COLOR_MATERIAL);
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
    glMaterialfv(GL_FRONT, GL_SPECULAR, materialSpecular);
    glMateriali(GL_FRONT, GL_SHININESS, 128);
}

} // namespace engine
