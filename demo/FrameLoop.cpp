#include "FrameLoop.h"

#include "Loader.h"
#include "Scene1.h"
#include "main.h"

#include "DemoEngine.h"
#include "FmodEngine.h"

#include <GL/gl.h>
#include <GL/glut.h>

#include <cstdint>

namespace {

constexpr std::int32_t endOfShowMs = 33000;

}

void TimerFunc(int /*value*/) {
    DrawGLScene();
    glutTimerFunc(static_cast<unsigned int>(REF_MS_EXTERN), TimerFunc, 1);
    glutPostRedisplay();
}

void DrawGLScene() {
    if (loaded == 0) {
        Loader();
    }
    demo->fmod->GetIsPlaying(); // for its trace on standard output
    if (static_cast<std::int32_t>(demo->fmod->GetCurTime()) > endOfShowMs) {
        Cleanup();
    }
    demo->fmod->UpdateSpectrum(); // the first of two in a frame: Refresh reads it again
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    DrawWhat();
    glutSwapBuffers();
}

void DrawWhat() {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    demo->Refresh();
    glPushMatrix();
    glTranslatef(0.0F, 0.0F, -200.0F);
    Scene1();
    glPopMatrix();
}
