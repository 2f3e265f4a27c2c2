// hold-input pointer|keyboard: takes it from all other programs, says so, and keeps it until ended.
// hold-input try: prints whether both are free to be taken.
#include <X11/Xlib.h>

#include <cstdio>
#include <string_view>

#include <unistd.h>

namespace {

bool TakesPointer(Display* display) {
    return XGrabPointer(display, DefaultRootWindow(display), False, 0, GrabModeAsync, GrabModeAsync,
                        None, None, CurrentTime) == GrabSuccess;
}

bool TakesKeyboard(Display* display) {
    return XGrabKeyboard(display, DefaultRootWindow(display), False, GrabModeAsync, GrabModeAsync,
                         CurrentTime) == GrabSuccess;
}

} // namespace

int main(int argumentCount, char** arguments) {
    Display* display = XOpenDisplay(nullptr);
    if (argumentCount != 2 || display == nullptr) {
        return 2;
    }
    const std::string_view what(arguments[1]);
    if (what == "try") {
        const bool pointerIsFree = TakesPointer(display);
        const bool keyboardIsFree = TakesKeyboard(display);
        std::puts(pointerIsFree && keyboardIsFree ? "free" : "held");
        XCloseDisplay(display);
        return 0;
    }
    if (!(what == "pointer" ? TakesPointer(display) : TakesKeyboard(display))) {
        return 1;
    }
    std::puts("taken");
    std::fflush(stdout);
    pause();
    return 0;
}
