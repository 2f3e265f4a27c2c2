// The mouse cursor, which in GLUT belongs to a window.
#include <Carbon/Carbon.h>

#include <GL/glut.h>

namespace {

OSStatus SetCursor(int cursor) {
    // Without a window freeglut would end the process.
    if (glutGetWindow() != 0) {
        glutSetCursor(cursor);
    }
    return noErr;
}

} // namespace

extern "C" {

OSStatus HideCursor() {
    return SetCursor(GLUT_CURSOR_NONE);
}

OSStatus ShowCursor() {
    return SetCursor(GLUT_CURSOR_INHERIT);
}
}
