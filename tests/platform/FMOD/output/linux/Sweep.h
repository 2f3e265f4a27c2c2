// A sound that tells its own position: a tone that rises steadily.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace sweep {

/// @p frames stereo frames at 44.1 kHz, the same on both sides. For at most half a minute.
std::vector<float> Frames(std::size_t frames);

/// What of the sweep is at the end of @p side, one side of frames at 44.1 kHz, in ms; nothing if
/// the last twentieth of a second is not the sweep alone, without a gap.
std::optional<double> EndMs(std::span<const float> side);

} // namespace sweep
