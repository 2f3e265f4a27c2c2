// The input format of fuzz_sound_operations: pairs of bytes, an operation and its argument.
#pragma once

#include <cstdint>

namespace fuzz {

enum Operation : std::uint8_t {
    // Of the device and the clock:
    passTime,
    suspend,
    openDevice,
    openGraph,
    repeatPosition,
    hangDevice,
    failDevice,
    misreport,
    underrun,
    interrupt,
    // Of the library:
    play,
    releaseSound,
    restart,
    askSpectrum,
    update,
    // Of one of two channels:
    setPaused,
    setMute,
    setVolume,
    operationCount,
};

} // namespace fuzz
