// What must be known about the X screen before requesting game mode; freeglut does not report it.
#pragma once

#include <memory>

using Display = struct _XDisplay;

/// A separate connection to the X server that freeglut uses, or will use. Main thread only.
class ScreenProbe {
public:
    ScreenProbe();

    /// Pixels, as the screen is now; 0 when the server does not answer.
    int Width() const;
    int Height() const;

    /// True when game mode at the current resolution would leave every mode, monitor and other
    /// program's grab as it is: the server is on this machine, offers mode switching and has the
    /// screen to itself, its one monitor covers that, upright, the mode freeglut would choose, and
    /// later restore, is the one in use, and pointer and keyboard are free.
    bool GameModeChangesNothing() const;

    /// Where the pointer is, in pixels of the screen.
    struct Position {
        int x;
        int y;
    };
    Position Pointer() const;

private:
    struct Closer {
        void operator()(Display* opened) const;
    };
    std::unique_ptr<Display, Closer> display;
};
