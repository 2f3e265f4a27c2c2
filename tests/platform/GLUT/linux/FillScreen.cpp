// fill-screen: asks for full screen as the engine does, paints the screen blue and prints what it
// has got, whenever that has changed. Prints the keys pressed; Escape ends it.
#include <Carbon/Carbon.h>

#include <GL/freeglut.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

std::string WhatItHas() {
    std::ostringstream text;
    text << (glutGameModeGet(GLUT_GAME_MODE_ACTIVE) != 0 ? "game mode " : "window ")
         << glutGet(GLUT_WINDOW_WIDTH) << 'x' << glutGet(GLUT_WINDOW_HEIGHT) << " at "
         << glutGet(GLUT_WINDOW_X) << ',' << glutGet(GLUT_WINDOW_Y) << ", cursor "
         << (glutGet(GLUT_WINDOW_CURSOR) == GLUT_CURSOR_NONE ? "hidden" : "shown");
    return text.str();
}

void Draw() {
    glClearColor(0.0F, 0.0F, 1.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    glutSwapBuffers();
    static std::string printed;
    const auto now = WhatItHas();
    if (now != printed) {
        std::puts(now.c_str());
        std::fflush(stdout);
        printed = now;
    }
}

void Tick(int) {
    glutTimerFunc(25, Tick, 0);
    glutPostRedisplay();
}

void Reshape(int width, int height) {
    glViewport(0, 0, width, height);
}

void Key(unsigned char key, int, int) {
    if (key == 27) {
        ShowCursor();
        std::exit(0);
    }
    std::printf("key %c\n", key);
    std::fflush(stdout);
}

} // namespace

int main(int argumentCount, char** arguments) {
    glutInit(&argumentCount, arguments);
    glutInitDisplayMode(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH);
    glutFullScreen();
    glutEnterGameMode();
    HideCursor();
    glutDisplayFunc(Draw);
    glutReshapeFunc(Reshape);
    glutKeyboardFunc(Key);
    glutTimerFunc(25, Tick, 0);
    glutMainLoop();
    return 0;
}
