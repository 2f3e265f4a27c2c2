// Gives windows a class by which a desktop identifies the program: freeglut does not.
//
// By --wrap, see FullScreen.cpp.
#include "ClosedWindow.h"

#include <GL/freeglut.h>
#include <GL/glx.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cctype>
#include <cerrno>
#include <string>

extern "C" {
int __real_glutCreateWindow(const char* title);

/// The class is the one that GTK gives the program's boxes: its name, with a capital.
int __wrap_glutCreateWindow(const char* title) {
    const int window = __real_glutCreateWindow(title);
    std::string name = program_invocation_short_name;
    std::string capital = name;
    if (!capital.empty()) {
        capital.front() = static_cast<char>(std::toupper(capital.front()));
    }
    XClassHint hint = {name.data(), capital.data()};
    XSetClassHint(glXGetCurrentDisplay(), glXGetCurrentDrawable(), &hint);
    PressEscapeWhenClosed();
    return window;
}
}
