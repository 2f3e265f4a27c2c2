// The least that is a demo: music, and a box with a picture that turns with it. Escape leaves.
#include <skovra/Box.h>
#include <skovra/DemoEngine.h>
#include <skovra/Display.h>
#include <skovra/FmodEngine.h>
#include <skovra/TextureManager.h>
#include <skovra/TimeEngine.h>

#include <GL/glut.h>

#include <algorithm>
#include <cstdlib>

static engine::DemoEngine* demo = nullptr;
static engine::Box* box = nullptr;

static void DrawFrame() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glScalef(1.0F, -1.0F, 1.0F);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    demo->Refresh();
    glRotatef(25.0F, 1.0F, 0.0F, 0.0F);
    glRotatef(static_cast<float>(demo->time->curTime) * 0.09F, 0.0F, 1.0F, 0.0F);
    box->DrawBox();
    glutSwapBuffers();
}

static void Tick(int value) {
    glutPostRedisplay();
    glutTimerFunc(25, Tick, value);
}

static void PressKey(unsigned char key, int /*x*/, int /*y*/) {
    if (key == 27) {
        std::exit(0);
    }
}

int main(int argc, char** argv) {
    glutInit(&argc, argv);
    const int mode = GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH;
    engine::BootGLUT(mode, 640, 480, 100, 100, false, "Minimal");
    glEnable(GL_DEPTH_TEST);

    demo = new engine::DemoEngine("Minimal");
    demo->SetFmod(new engine::FmodEngine("synchtune"));
    demo->textures->LoadTexture("texture", "png", "side");

    box = new engine::Box;
    box->width = box->height = box->depth = 200.0F;
    box->texture = demo->textures->textures["side"];
    std::fill_n(&box->colour[0][0], 18, 1.0F);

    glutDisplayFunc(DrawFrame);
    glutReshapeFunc(engine::ReSizeGLScene);
    glutKeyboardFunc(PressKey);
    glutTimerFunc(25, Tick, 0);
    demo->fmod->Play();
    glutMainLoop();
    return 0;
}
