#include "Loader.h"

#include "OpenGLState.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "FmodEngine.h"
#include "TextureManager.h"

#include <GL/gl.h>
#include <GL/glut.h>

#include <iostream>

float rotate = 0.0F;
float globalAngle = 0.0F;
engine::Box* kasse = nullptr;

void Loader() {
    std::cout << "Setting OpenGL settings\n";
    SetGL();
    std::cout << "Loading Textures...\n";
    LoadTextures();
    kasse = new engine::Box; // lives as long as the process
    glColor3f(1.0F, 1.0F, 1.0F);
    demo->fmod->Play();
    demo->fmod->Update();
    loaded = 1;
}

void LoadTextures() {
    demo->textures->LoadTexture("texture", "png", "texture");
    demo->textures->LoadTexture("skovr", "png", "skovr");
    demo->textures->LoadTexture("credits", "png", "credits");
}

void LoaderGraphics(int /*progress*/) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glutSwapBuffers();
}
