// GLUT in a recording: as much of it as the show calls, in virtual time. Drawing takes no time, so
// every timer fires on time.
#include "Glut.h"

#include <GL/glut.h>

#include <optional>

namespace record {

namespace {

struct Timer {
    std::int64_t dueMs;
    void (*callback)(int);
    int value;
};

Window window;
std::int64_t nowMs = 0;
std::optional<Timer> timer; // the show has one at a time
bool redisplayPosted = false;
void (*display)() = nullptr;
void (*reshape)(int, int) = nullptr;

void Redisplay() {
    redisplayPosted = false;
    window.prepare(nowMs, true);
    display();
    window.show(nowMs);
}

void RunTimer() {
    const Timer due = *timer;
    timer.reset();
    nowMs = due.dueMs;
    window.pass(nowMs);
    window.prepare(nowMs, false); // the redisplay that it posts comes at the same time
    due.callback(due.value);
}

} // namespace

void UseWindow(Window shown) {
    window = std::move(shown);
}

} // namespace record

using namespace record;

void glutInit(int*, char**) {}
void glutInitDisplayMode(unsigned int) {}
void glutInitWindowSize(int, int) {}
void glutInitWindowPosition(int, int) {}

int glutCreateWindow(const char*) {
    window.open();
    redisplayPosted = true;
    return 1;
}

// Called only for full screen, to which the alerts say No.
void glutFullScreen() {}
int glutEnterGameMode() {
    return 0;
}

void glutDisplayFunc(void (*callback)()) {
    display = callback;
}

void glutReshapeFunc(void (*callback)(int, int)) {
    reshape = callback;
}

void glutKeyboardFunc(void (*)(unsigned char, int, int)) {} // nobody presses a key

void glutTimerFunc(unsigned int ms, void (*callback)(int), int value) {
    timer = {nowMs + ms, callback, value};
}

void glutPostRedisplay() {
    redisplayPosted = true;
}

void glutSwapBuffers() {} // there is one buffer; what it holds after the redisplay is shown

void glutMainLoop() {
    reshape(window.width, window.height);
    while (redisplayPosted || timer) {
        if (redisplayPosted) {
            Redisplay();
        } else {
            RunTimer();
        }
    }
}
