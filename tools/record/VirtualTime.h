// The time of a recording: it passes only when the show waits for its next tick.
#pragma once

#include "Output.h"

#include <cstdint>

namespace record {

inline constexpr std::int64_t picturePeriodMs = 25; ///< the show's frame period: 40 a second
inline constexpr std::int64_t lastPictureMs = 33000;

/// The number of frames of a show up to and including the one at @p ms.
constexpr std::int64_t PicturesUntil(std::int64_t ms) {
    return ms / picturePeriodMs + 1;
}

/// The number of audio frames heard after @p ms (>= 0), rounded up, so that the sound library,
/// which rounds to the nearest millisecond, returns @p ms.
constexpr std::int64_t FramesUntil(std::int64_t ms) {
    return (ms * sound::outputRateHz + 999) / 1000;
}

} // namespace record
