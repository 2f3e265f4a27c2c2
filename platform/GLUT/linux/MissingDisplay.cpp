// What is said where there is a display, but not one that freeglut knows.
//
// By --wrap, see FullScreen.cpp.
#include "ScreenProbe.h"
#include "WaylandNotice.h"

#include <GL/freeglut.h>

#include <cstdio>
#include <cstdlib>

extern "C" {
void __real_glutInit(int* argumentCount, char** arguments);

/// freeglut then ends the process with words that tell no more than the display's name.
void __wrap_glutInit(int* argumentCount, char** arguments) {
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if (wayland != nullptr && *wayland != '\0' && ScreenProbe().Width() == 0) {
        std::fputs("skovra: no X display answers; on Wayland it comes with Xwayland\n", stderr);
        std::fflush(stdout); // GTK ends the process at once if the display goes meanwhile
        TellOfMissingX();
    }
    __real_glutInit(argumentCount, arguments);
}
}
