// The message when there is a display, but none that freeglut supports.
//
// By --wrap, see FullScreen.cpp.
#include "DisplayArgument.h"
#include "ScreenProbe.h"
#include "WaylandNotice.h"

#include <GL/freeglut.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

extern "C" {
void __real_glutInit(int* argumentCount, char** arguments);

/// Where there is none, freeglut ends the process with a message that names only the display.
void __wrap_glutInit(int* argumentCount, char** arguments) {
    if (const char* name = DisplayArgument(*argumentCount, arguments); name != nullptr) {
        // For GTK and ScreenProbe: all on one server. Other threads may be reading the environment:
        // this leaves them the variables, and the array, that they had.
        setenv("DISPLAY", name, 1);
    }
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if (wayland != nullptr && *wayland != '\0' && ScreenProbe().Width() == 0) {
        std::fprintf(stderr, "%s: no X display answers; on Wayland it comes with Xwayland\n",
                     program_invocation_short_name);
        std::fflush(stdout); // GTK ends the process at once if the display is lost meanwhile
        ReportMissingX();
    }
    __real_glutInit(argumentCount, arguments);
}
}
