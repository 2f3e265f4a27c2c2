// Video modes, and what freeglut's game mode does to them.
#pragma once

#include <span>
#include <string_view>

/// What identifies a mode: the pixel clock in kHz, then the timings in pixels and lines.
struct ScreenMode {
    unsigned int clock;
    unsigned int width, horizontalStart, horizontalEnd, horizontalTotal;
    unsigned int height, verticalStart, verticalEnd, verticalTotal;
    unsigned int flags; ///< polarity of the sync pulses, interlacing, double scan

    bool operator==(const ScreenMode&) const = default;
};

/// True when game mode, requested at the current resolution, would enter @p current and later
/// restore @p current, on a server that offers the modes @p offered, in that order.
bool GameModeKeeps(const ScreenMode& current, std::span<const ScreenMode> offered);

/// True when the X server of that name allows this program to switch modes: it runs on this
/// machine. A remote server answers with an error that ends the program.
bool ServerSwitchesModes(std::string_view displayName);
