#include "DemoEngine.h"

#include "FmodEngine.h"
#include "LightEngine.h"
#include "TextureManager.h"
#include "TimeEngine.h"

#include <GL/gl.h>

#include <utility>

namespace engine {

// What is made here with new lives as long as the process; nothing deletes it.
DemoEngine::DemoEngine(std::string newTitle) : title(std::move(newTitle)) {
    viewExtentX = 500.0F;
    viewExtentY = 375.0F;
    cameraX = 0.0F;
    cameraY = 0.0F;
    cameraZ = -1100.0F;
    placeholderA = new Placeholder;
    placeholderB = new Placeholder;
    textures = new TextureManager;
    light = new LightEngine;
    clearColour = new float[304]();
    fmod = nullptr;
    time = nullptr;
}

void DemoEngine::SetFmod(FmodEngine* musicEngine) {
    fmod = musicEngine;
    time = new TimeEngine(fmod);
}

void DemoEngine::Refresh() {
    glTranslatef(cameraX, cameraY, cameraZ);
    fmod->UpdateSpectrum();
    time->Update();
}

void DemoEngine::EnableSEM() {
    glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    glTexGeni(GL_S, GL_SPHERE_MAP, 0); // not a parameter: OpenGL rejects both, on purpose
    glTexGeni(GL_T, GL_SPHERE_MAP, 0);
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_TEXTURE_GEN_T);
}

void DemoEngine::DisableSEM() {
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
}

} // namespace engine
