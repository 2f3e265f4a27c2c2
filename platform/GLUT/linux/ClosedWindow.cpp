// Lets a program end as it does by Escape when its window is closed: freeglut would just exit.
//
// By --wrap, see FullScreen.cpp.
#include "ClosedWindow.h"

#include <GL/freeglut.h>

#include <cstdlib>
#include <utility>

namespace {

using PressKey = void (*)(unsigned char key, int x, int y);

constexpr unsigned char escapeKey = 27;

// The last window that got a keyboard callback; programs have one.
int keyboardWindow = 0;
PressKey pressKey = nullptr; // null: none, or the program itself ends that window

void Forget() {
    pressKey = nullptr;
}

/// freeglut calls this for any window that goes, whoever ends it. If the program does not exit,
/// freeglut does.
void OnClose() {
    if (pressKey != nullptr && glutGetWindow() == keyboardWindow) {
        std::exchange(pressKey, nullptr)(escapeKey, 0, 0);
    }
}

} // namespace

void PressEscapeWhenClosed() {
    // exit closes all windows, too; what is registered after glutInit comes before that.
    [[maybe_unused]] static const int registered = std::atexit(Forget);
    glutCloseFunc(OnClose);
}

extern "C" {
void __real_glutKeyboardFunc(PressKey callback);
void __real_glutDestroyWindow(int closed);

void __wrap_glutKeyboardFunc(PressKey callback) {
    __real_glutKeyboardFunc(callback);
    keyboardWindow = glutGetWindow();
    pressKey = callback;
}

void __wrap_glutDestroyWindow(int closed) {
    if (closed == keyboardWindow) {
        Forget();
    }
    __real_glutDestroyWindow(closed);
}
}
