// Converts the time report of a PipeWire stream to frames heard.
#pragma once

#include <cstdint>

struct pw_time;

namespace sound {

/// @p playedFrames of the frames given to a device had been heard at @p ns (CLOCK_MONOTONIC).
struct PlayReport {
    std::int64_t playedFrames; ///< as DeviceFeed::Render has it
    std::int64_t ns;
};

/// For a stream at the output's rate that was given @p writtenFrames in all and requests more at
/// @p nowNs: the frames written minus those queued, in the resampler, and in the latency between
/// the graph's driver and the listener. An impossible report gives unknownPosition. Real-time.
///
/// Source of the formula: the comment of struct pw_time in pipewire/stream.h.
PlayReport ReportOf(const pw_time& time, std::int64_t writtenFrames, std::int64_t nowNs) noexcept;

} // namespace sound
