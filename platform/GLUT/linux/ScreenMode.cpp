#include "ScreenMode.h"

#include <algorithm>
#include <cstdint>

namespace {

/// In whole Hz, rounded down as freeglut does.
std::uint64_t RefreshRate(const ScreenMode& mode) {
    const auto pixels = std::uint64_t{mode.horizontalTotal} * mode.verticalTotal;
    return pixels == 0 ? 0 : std::uint64_t{mode.clock} * 1000 / pixels;
}

} // namespace

bool GameModeKeeps(const ScreenMode& current, std::span<const ScreenMode> offered) {
    const auto firstIsCurrent = [&](auto resembles) {
        const auto first = std::ranges::find_if(offered, [&](const ScreenMode& mode) {
            return mode.width == current.width && mode.height == current.height && resembles(mode);
        });
        return first != offered.end() && *first == current;
    };
    const auto sameRate = [&](const ScreenMode& mode) {
        return RefreshRate(mode) == RefreshRate(current);
    };
    const auto sameClock = [&](const ScreenMode& mode) { return mode.clock == current.clock; };
    // freeglut enters the first mode of the current size and refresh rate, and goes back to the
    // first of its size and clock.
    return firstIsCurrent(sameRate) && firstIsCurrent(sameClock);
}

bool ServerSwitchesModes(std::string_view displayName) {
    return displayName.starts_with(':') || displayName.starts_with("unix:");
}
