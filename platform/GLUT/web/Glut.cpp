// GLUT with one window, which is a canvas of the page.
#include "Frame.h"
#include "PageWindow.h"
#include "Schedule.h"

#include <GL/glut.h>
#include <emscripten/emscripten.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

struct {
    void (*display)() = nullptr;
    void (*reshape)(int width, int height) = nullptr;
    void (*keyboard)(unsigned char key, int x, int y) = nullptr;
    void (*special)(int key, int x, int y) = nullptr;
} callbacks;

constexpr int theWindow = 1;

Schedule schedule;
int currentWindow = 0;
int initialWidth = 300;
int initialHeight = 300;
int pixelWidth = 0;
int pixelHeight = 0;
bool isFrameComplete = false; // and not shown yet

int OpenWindow(bool isFullScreen) {
    currentWindow = theWindow;
    std::atexit(SkovraWindowClose);
    SkovraWindowOpen(isFullScreen, initialWidth, initialHeight);
    return currentWindow;
}

void Reshape() {
    SkovraWindowResize(pixelWidth, pixelHeight);
    if (callbacks.reshape != nullptr) {
        callbacks.reshape(pixelWidth, pixelHeight);
    } else {
        glViewport(0, 0, pixelWidth, pixelHeight);
    }
}

Schedule::Work RunNext() {
    const auto due = schedule.Take(emscripten_get_now());
    switch (due.work) {
    case Schedule::Work::None:
        break;
    case Schedule::Work::Reshape:
        Reshape();
        break;
    case Schedule::Work::Timer:
        due.callback(due.value);
        break;
    case Schedule::Work::Display:
        if (callbacks.display != nullptr) {
            callbacks.display();
        }
        break;
    }
    return due.work;
}

/// One callback, and the drawing that it calls for: the page shows neither a canvas that was
/// emptied by a new size, nor a frame that is replaced at once.
void RunWhatIsDue() {
    for (;;) {
        const auto work = RunNext();
        const bool isToBeDrawn = work == Schedule::Work::Reshape ||
                                 (work == Schedule::Work::Timer && schedule.IsRedisplayPosted());
        if (!isToBeDrawn) {
            return;
        }
    }
}

void ShowFrame() {
    if (std::exchange(isFrameComplete, false)) {
        SkovraGlFinishFrame();
        SkovraWindowEndFrame();
    }
}

void Deliver(SkovraWindowEvent event, int first, int second) {
    switch (event) {
    case skovraWindowWork:
        RunWhatIsDue();
        break;
    case skovraWindowSize:
        pixelWidth = first;
        pixelHeight = second;
        schedule.PostReshape();
        break;
    case skovraWindowKey:
        if (callbacks.keyboard != nullptr) {
            callbacks.keyboard(static_cast<unsigned char>(first), 0, 0);
        }
        break;
    case skovraWindowSpecial:
        if (callbacks.special != nullptr) {
            callbacks.special(first, 0, 0);
        }
        break;
    }
}

} // namespace

extern "C" {

double SkovraWindowDeliver(SkovraWindowEvent event, int first, int second) {
    Deliver(event, first, second);
    ShowFrame();
    return schedule.WaitMs(emscripten_get_now());
}

void glutInit(int* /*argumentCount*/, char** /*arguments*/) {
    if (!SkovraWindowStart()) {
        std::fprintf(stderr, "%s: this browser has no WebGL 2\n", program_invocation_short_name);
        std::exit(1);
    }
}

void glutInitDisplayMode(unsigned int /*mode*/) {} // every window has what the engine asks for

void glutInitWindowPosition(int /*x*/, int /*y*/) {} // the page decides

void glutInitWindowSize(int width, int height) {
    initialWidth = width;
    initialHeight = height;
}

int glutCreateWindow(const char* /*title*/) {
    return OpenWindow(false);
}

int glutEnterGameMode() {
    return OpenWindow(true);
}

void glutFullScreen() {
    if (currentWindow != 0) {
        SkovraWindowOpen(true, initialWidth, initialHeight);
    }
}

void glutDestroyWindow(int window) {
    if (window == currentWindow) {
        currentWindow = 0;
        SkovraWindowClose();
    }
}

int glutGetWindow() {
    return currentWindow;
}

void glutSetCursor(int cursor) {
    SkovraWindowSetCursor(cursor != GLUT_CURSOR_NONE);
}

void glutDisplayFunc(void (*callback)()) {
    callbacks.display = callback;
}

void glutReshapeFunc(void (*callback)(int width, int height)) {
    callbacks.reshape = callback;
}

void glutKeyboardFunc(void (*callback)(unsigned char key, int x, int y)) {
    callbacks.keyboard = callback;
}

void glutSpecialFunc(void (*callback)(int key, int x, int y)) {
    callbacks.special = callback;
}

void glutTimerFunc(unsigned int delayMs, void (*callback)(int value), int value) {
    schedule.ArmTimer(emscripten_get_now(), delayMs, callback, value);
}

void glutPostRedisplay() {
    schedule.PostRedisplay();
}

void glutSwapBuffers() {
    isFrameComplete = true;
}

void glutMainLoop() {
    SkovraWindowLoop();
}
}
