#include "Display.h"

#include <Carbon/Carbon.h>
#include <GL/glu.h>
#include <GL/glut.h>

namespace engine {

void BootGLUT(int displayMode, int width, int height, int x, int y, bool fullScreen,
              const std::string& title) {
    glutInitDisplayMode(static_cast<unsigned int>(displayMode));
    if (fullScreen) {
        glutFullScreen(); // called before there is a window: the next call makes the display
        glutEnterGameMode();
        HideCursor();
    } else {
        glutInitWindowSize(width, height);
        glutInitWindowPosition(x, y);
        glutCreateWindow(title.c_str());
    }
}

void ReSizeGLScene(int width, int height) {
    if (height == 0) {
        height = 1;
    }
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glViewport(0, 0, width, height);
    const auto aspect = static_cast<float>(static_cast<double>(width) / height);
    gluPerspective(45.0, aspect, 1.0, 2500.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    gluLookAt(0, 0, 5, 0, 0, -0.0, 0, 1, 0);
}

} // namespace engine
