// Prints "hidden" when the mouse cursor, as the display shows it now, has no visible pixel.
#include <X11/Xlib.h>
#include <X11/extensions/Xfixes.h>

#include <algorithm>
#include <cstdio>

int main() {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        std::fputs("cursor-state: cannot open the display\n", stderr);
        return 1;
    }
    XFixesCursorImage* image = XFixesGetCursorImage(display);
    if (image == nullptr) {
        std::fputs("cursor-state: the display tells no cursor\n", stderr);
        return 1;
    }
    const auto count = static_cast<std::size_t>(image->width) * image->height;
    const bool hidden = std::none_of(image->pixels, image->pixels + count,
                                     [](unsigned long pixel) { return (pixel >> 24 & 0xFF) != 0; });
    std::puts(hidden ? "hidden" : "visible");
    XFree(image);
    XCloseDisplay(display);
    return 0;
}
