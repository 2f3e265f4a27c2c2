// The time of a recording: it passes only when the show waits for its next tick.
#pragma once

#include "Output.h"

#include <cstdint>

namespace record {

inline constexpr std::int64_t picturePeriodMs = 25; ///< the show's frame period: 40 a second
inline constexpr std::int64_t lastPictureMs = 33000;

/// The pictures of a show up to and including the one at @p ms.
constexpr std::int64_t PicturesUntil(std::int64_t ms) {
    return ms / picturePeriodMs + 1;
}

/// How many frames of sound are heard once @p ms (>= 0) have passed, rounded up: the sound library,
/// which tells the nearest millisecond, answers @p ms.
constexpr std::int64_t FramesUntil(std::int64_t ms) {
    return (ms * sound::outputRateHz + 999) / 1000;
}

} // namespace record
