// A sound from which its position can be read: a tone with steadily rising pitch.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace sweep {

/// @p frames stereo frames at 44.1 kHz, the same on both sides; at most half a minute.
std::vector<float> Frames(std::size_t frames);

/// The position of the sweep at the end of @p side, one side of frames at 44.1 kHz, in ms; nothing
/// if the last twentieth of a second is not the sweep alone, without a gap.
std::optional<double> EndMs(std::span<const float> side);

} // namespace sweep
