// What a program learns of a closed window, from a recorded freeglut, defined here.
#include "ClosedWindow.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

#include <string>

extern "C" {
void __wrap_glutKeyboardFunc(void (*callback)(unsigned char key, int x, int y));
void __wrap_glutDestroyWindow(int closed);
}

namespace {

std::string calls;
int currentWindow = 0;
void (*onClose)() = nullptr;

void PressAnyKey(unsigned char key, int, int) {
    calls += "key " + std::to_string(key) + " in " + std::to_string(currentWindow) + "; ";
    onClose(); // a program that exits closes its windows
}

} // namespace

extern "C" {

int glutGetWindow() {
    return currentWindow;
}

void glutCloseFunc(void (*callback)()) {
    onClose = callback;
}

void __real_glutKeyboardFunc(void (*callback)(unsigned char, int, int)) {
    calls += callback == PressAnyKey ? "keyboard; " : "no keyboard; ";
}

void __real_glutDestroyWindow(int closed) {
    calls += "destroy " + std::to_string(closed) + "; ";
}
}

namespace {

class ClosedWindow : public testing::Test {
protected:
    ClosedWindow() {
        currentWindow = 5;
        PressEscapeWhenClosed();
        __wrap_glutKeyboardFunc(PressAnyKey);
        calls.clear();
    }
};

TEST_F(ClosedWindow, IsTakenForEscapeOnce) {
    onClose();
    onClose();
    EXPECT_EQ(calls, "key 27 in 5; ");
}

TEST_F(ClosedWindow, IsNothingToAProgramWithoutAKeyboardCallback) {
    __wrap_glutKeyboardFunc(nullptr);
    onClose();
    EXPECT_EQ(calls, "no keyboard; ");
}

TEST_F(ClosedWindow, IsAnotherThanTheOneWithTheKeyboardCallback) {
    currentWindow = 6;
    onClose();
    EXPECT_EQ(calls, "");
}

TEST_F(ClosedWindow, MayBeTheProgramsOwnDoing) {
    __wrap_glutDestroyWindow(6);
    __wrap_glutDestroyWindow(5);
    onClose();
    EXPECT_EQ(calls, "destroy 6; destroy 5; ");
}

} // namespace
