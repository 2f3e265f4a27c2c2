#include "Glut.h"

#include "Effects.h"

#include <GL/glut.h>

namespace doubles {

GlutScript glut;

namespace {

template <typename Function>
Word Callback(Function* callback) {
    const auto name = glut.names.find(reinterpret_cast<void (*)()>(callback));
    return {name == glut.names.end() ? "unknown callback" : name->second};
}

Word Font(const void* font) {
    if (font == GLUT_STROKE_ROMAN) {
        return {"GLUT_STROKE_ROMAN"};
    }
    return {font == GLUT_STROKE_MONO_ROMAN ? "GLUT_STROKE_MONO_ROMAN" : "unknown font"};
}

} // namespace

} // namespace doubles

using namespace doubles;

// The fonts are named by the addresses of these.
void* glutStrokeRoman = nullptr;
void* glutStrokeMonoRoman = nullptr;

void glutInit(int* argumentCount, char** arguments) {
    std::string all;
    for (int index = 0; index < *argumentCount; ++index) {
        all += (index == 0 ? "" : " ") + std::string(arguments[index]);
    }
    Record("glutInit", *argumentCount, all);
}

void glutInitDisplayMode(unsigned int displayMode) {
    Record("glutInitDisplayMode", displayMode);
}

void glutInitWindowSize(int width, int height) {
    Record("glutInitWindowSize", width, height);
}

void glutInitWindowPosition(int x, int y) {
    Record("glutInitWindowPosition", x, y);
}

int glutCreateWindow(const char* title) {
    Record("glutCreateWindow", title);
    return 1;
}

void glutFullScreen() {
    Record("glutFullScreen");
}

int glutEnterGameMode() {
    Record("glutEnterGameMode");
    return 1;
}

void glutDisplayFunc(void (*callback)()) {
    Record("glutDisplayFunc", Callback(callback));
    glut.display = callback;
}

void glutReshapeFunc(void (*callback)(int, int)) {
    Record("glutReshapeFunc", Callback(callback));
    glut.reshape = callback;
}

void glutKeyboardFunc(void (*callback)(unsigned char, int, int)) {
    Record("glutKeyboardFunc", Callback(callback));
    glut.keyboard = callback;
}

void glutTimerFunc(unsigned int time, void (*callback)(int), int value) {
    Record("glutTimerFunc", time, Callback(callback), value);
    glut.timer = callback;
    glut.timerValue = value;
    glut.timerArmed();
}

void glutPostRedisplay() {
    Record("glutPostRedisplay");
}

void glutSwapBuffers() {
    Record("glutSwapBuffers");
    ++glut.presentedFrames;
}

void glutMainLoop() {
    Record("glutMainLoop");
    glut.mainLoop();
}

void glutSolidSphere(double radius, int slices, int stacks) {
    Record("glutSolidSphere", radius, slices, stacks);
}

void glutStrokeCharacter(void* font, int character) {
    Record("glutStrokeCharacter", Font(font), character);
}
