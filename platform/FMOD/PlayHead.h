// What is heard now, out of what was handed to the device and when.
#pragma once

#include <atomic>
#include <cstdint>

namespace sound {

/// Follows the play head between two reports of it.
/// Publish: one thread at a time, never blocks. The rest: any thread, never blocks.
class PlayHead {
public:
    /// @p frames (of the output's timeline, see Output.h) had been heard at @p nowNs
    /// (CLOCK_MONOTONIC).
    void Publish(std::int64_t frames, std::int64_t nowNs) noexcept;

    /// Frames heard by @p nowNs if the device runs on at its nominal rate; 0 before the first
    /// report.
    std::int64_t Extrapolate(std::int64_t nowNs) const noexcept;

    /// The same, but never more than @p handedOut and never less than was answered before.
    std::int64_t HeardFrames(std::int64_t nowNs, std::int64_t handedOut) noexcept;

private:
    // A sequence lock: odd while a report is being written.
    std::atomic<std::uint32_t> sequence{0};
    std::atomic<std::int64_t> reportedFrames{0};
    std::atomic<std::int64_t> reportedNs{0};
    std::atomic<std::int64_t> lastAnswer{0};
};

} // namespace sound
