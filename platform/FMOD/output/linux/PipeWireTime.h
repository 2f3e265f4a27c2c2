// What a PipeWire stream says of its time, as frames heard.
#pragma once

#include <cstdint>

struct pw_time;

namespace sound {

/// @p playedFrames of what was given to a device had been heard at @p ns (CLOCK_MONOTONIC).
struct PlayReport {
    std::int64_t playedFrames; ///< as DeviceFeed::Render has it
    std::int64_t ns;
};

/// Of a stream at the output's rate that was given @p writtenFrames in all, when it asks for more
/// at
/// @p nowNs: what its graph's driver, the way from there to the listener, and what is still queued
/// or in the resampler make of it. An answer that cannot be is not known. Real-time.
///
/// Source of the formula: the comment of struct pw_time in pipewire/stream.h.
PlayReport ReportOf(const pw_time& time, std::int64_t writtenFrames, std::int64_t nowNs) noexcept;

} // namespace sound
