// Full screen that leaves the desktop unchanged, in place of freeglut's own.
//
// The linker's --wrap option turns a program's calls of glutX into calls of __wrap_glutX, and
// calls of __real_glutX into those of freeglut's own; hence the reserved names.
#include "ScreenProbe.h"

#include <GL/freeglut.h>
#include <GL/glx.h>
#include <X11/Xlib.h>

extern "C" {
void __real_glutFullScreen();
int __real_glutEnterGameMode();
}

namespace {

bool GameModeIsAsLargeAs(int width, int height) {
    return glutGameModeGet(GLUT_GAME_MODE_ACTIVE) != 0 &&
           glutGameModeGet(GLUT_GAME_MODE_WIDTH) == width &&
           glutGameModeGet(GLUT_GAME_MODE_HEIGHT) == height;
}

/// freeglut moves the pointer to the middle and leaves the keyboard without focus once the window
/// is gone; both would outlast a program that is killed.
void LeaveNoTrace(ScreenProbe::Position pointer) {
    Display* display = glXGetCurrentDisplay();
    XWarpPointer(display, 0, XDefaultRootWindow(display), 0, 0, 0, 0, pointer.x, pointer.y);
    XSetInputFocus(display, glXGetCurrentDrawable(), RevertToPointerRoot, CurrentTime);
    XFlush(display);
}

bool EnteredGameMode(const ScreenProbe& screen) {
    if (!screen.GameModeChangesNothing()) {
        return false;
    }
    const auto pointer = screen.Pointer();
    if (__real_glutEnterGameMode() == 0) {
        return false;
    }
    if (!GameModeIsAsLargeAs(screen.Width(), screen.Height())) {
        glutLeaveGameMode();
        return false;
    }
    LeaveNoTrace(pointer);
    return true;
}

int OpenFullScreenWindow(int width, int height) {
    glutInitWindowSize(width, height);
    // Anywhere else, without a window manager the window would end up as far off the screen.
    glutInitWindowPosition(0, 0);
    // A window manager takes a moment to make it full screen: no frame is shown until then.
    const auto displayMode = static_cast<unsigned int>(glutGet(GLUT_INIT_DISPLAY_MODE));
    glutInitDisplayMode(displayMode | GLUT_BORDERLESS);
    const int window = glutCreateWindow("Skovra");
    glutInitDisplayMode(displayMode);
    __real_glutFullScreen();
    return window;
}

} // namespace

extern "C" {

/// Does nothing while there is no window: freeglut would end the process.
void __wrap_glutFullScreen() {
    if (glutGetWindow() != 0) {
        __real_glutFullScreen();
    }
}

/// Game mode if it changes nothing but the picture on the screen, else a full-screen window.
/// Returns the window, which is then the current one.
int __wrap_glutEnterGameMode() {
    const ScreenProbe screen;
    if (EnteredGameMode(screen)) {
        return glutGetWindow();
    }
    if (screen.Width() > 0) {
        return OpenFullScreenWindow(screen.Width(), screen.Height());
    }
    return OpenFullScreenWindow(glutGet(GLUT_SCREEN_WIDTH), glutGet(GLUT_SCREEN_HEIGHT));
}
}
