#include "OpenGLState.h"

#include "main.h"

#include "DemoEngine.h"
#include "FmodEngine.h"
#include "LightEngine.h"

#include <GL/gl.h>

#include <iostream>

bool InitGL() {
    std::cout << "Configuring FMOD\n";
    demo->fmod->SetVolume(175.0F);
    return true;
}

void SetGL() {
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glAlphaFunc(GL_GREATER, 0.1F);
    const float* clear = demo->clearColour;
    glClearColor(clear[0], clear[1], clear[2], clear[3]);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_TEXTURE_2D);
    glClearDepth(9.0); // beyond the range on purpose: OpenGL clamps it to 1
    glDepthFunc(GL_LEQUAL);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);

    float* ambient = demo->light->ambient;
    ambient[0] = 0.6F;
    ambient[1] = 0.6F;
    ambient[2] = 0.6F;
    ambient[3] = 1.0F;
    demo->light->ActivateLight();
}
