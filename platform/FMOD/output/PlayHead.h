// The frame heard now, from the positions that the device reports.
#pragma once

#include <atomic>
#include <cstdint>
#include <limits>

namespace sound {

/// Interpolates the play head between reports, and smooths reports that are estimates.
/// Publish and Follow: one thread at a time, never block. The rest: any thread, never blocks.
class PlayHead {
public:
    /// An exact report: @p frames (of the output's timeline, see Output.h) had been heard at
    /// @p nowNs (CLOCK_MONOTONIC).
    void Publish(std::int64_t frames, std::int64_t nowNs) noexcept;

    /// An estimated report. On a busy system sound servers may be milliseconds off for seconds, and
    /// some repeat an old position as if it were new, while the device's own clock is steady. So a
    /// deviation from earlier reports is corrected gradually, and at once only if it is large and
    /// the following reports confirm it.
    void Follow(std::int64_t frames, std::int64_t nowNs) noexcept;

    /// Frames heard by @p nowNs if the device runs on at its nominal rate; 0 before the first
    /// report.
    std::int64_t Extrapolate(std::int64_t nowNs) const noexcept;

    /// The same, but at most @p handedOut and never decreasing.
    std::int64_t HeardFrames(std::int64_t nowNs, std::int64_t handedOut) noexcept;

private:
    bool IsConfirmed(std::int64_t begin, std::int64_t nowNs) noexcept;

    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    // When frame 0 is heard; at the nominal rate that gives the time of every other frame.
    std::atomic<std::int64_t> beginNs{never};
    std::atomic<std::int64_t> lastAnswer{0};
    // The reporting threads only:
    std::int64_t reportedNs = 0;
    std::int64_t farBeginNs = never; // on which reports with a large deviation agree,
    std::int64_t farSinceNs = 0;     // and since when
};

} // namespace sound
