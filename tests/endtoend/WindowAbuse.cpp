// Resizes another program's window at random, moves it about and minimises it, as fast as the
// display takes it: abuse-window WINDOW SEED COUNT
//
// Prints "resized COUNT last WIDTH HEIGHT": how many sizes the window has really had, and its last.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <random>

namespace {

constexpr int largest = 4096;

struct Size {
    int width;
    int height;
    bool operator==(const Size&) const = default;
};

class Victim {
public:
    Victim(Display* opened, Window victim) : display(opened), window(victim) {
        XSelectInput(display, window, StructureNotifyMask);
    }

    void Resize(const Size& wanted) {
        asked = wanted;
        XResizeWindow(display, window, static_cast<unsigned int>(wanted.width),
                      static_cast<unsigned int>(wanted.height));
    }

    /// Returns when the window has the size last asked for.
    void AwaitSize() {
        while (size != asked) {
            NextEvent();
        }
    }

    void Move(int x, int y) { XMoveWindow(display, window, x, y); }

    /// Returns when it is back.
    void MinimiseAndRestore() {
        XIconifyWindow(display, window, DefaultScreen(display));
        while (mapped) {
            NextEvent();
        }
        XMapRaised(display, window);
        while (!mapped) {
            NextEvent();
        }
    }

    int sizes = 0; ///< that it has had since it was watched
    Size size{};

private:
    void NextEvent() {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == ConfigureNotify) {
            const Size told{event.xconfigure.width, event.xconfigure.height};
            sizes += told != size ? 1 : 0;
            size = told;
        } else if (event.type == UnmapNotify) {
            mapped = false;
        } else if (event.type == MapNotify) {
            mapped = true;
        }
    }

    Display* display;
    Window window;
    Size asked{};
    bool mapped = true;
};

void Abuse(Victim& victim, unsigned int seed, int count) {
    constexpr std::array<Size, 4> extremes{
        {{1, 1}, {largest, 1}, {1, largest}, {largest, largest}}};
    // At the edges of the screen, beyond each, and far away.
    constexpr std::array<std::array<int, 2>, 6> places{
        {{0, 0}, {-5000, 100}, {1279, 1023}, {100, -5000}, {5000, 5000}, {32000, -32000}}};
    std::mt19937 random(seed);
    const auto below = [&](std::size_t end) { return random() % end; };
    for (int i = 0; i < count; ++i) {
        if (i % 50 < static_cast<int>(extremes.size())) {
            victim.Resize(extremes[static_cast<std::size_t>(i % 50)]);
        } else {
            victim.Resize(
                {1 + static_cast<int>(below(largest)), 1 + static_cast<int>(below(largest))});
        }
        if (i % 7 == 0) {
            const auto& [x, y] = places[below(std::size(places))];
            victim.Move(x, y);
        }
        if (i % 50 == 25) {
            victim.MinimiseAndRestore();
        }
    }
    victim.AwaitSize();
}

} // namespace

int main(int argc, char** argv) {
    Display* display = XOpenDisplay(nullptr);
    if (argc != 4 || display == nullptr) {
        std::fputs("usage: abuse-window WINDOW SEED COUNT, on a display\n", stderr);
        return 2;
    }
    Victim victim(display, std::strtoul(argv[1], nullptr, 0));
    Abuse(victim, static_cast<unsigned int>(std::atoi(argv[2])), std::atoi(argv[3]));
    std::printf("resized %d last %d %d\n", victim.sizes, victim.size.width, victim.size.height);
    XCloseDisplay(display);
    return 0;
}
