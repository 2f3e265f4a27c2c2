// What is heard now, out of what was handed to the device and when.
#pragma once

#include <atomic>
#include <cstdint>
#include <limits>

namespace sound {

/// Follows the play head between two reports of it, and beside reports that are not quite true.
/// Publish and Follow: one thread at a time, never block. The rest: any thread, never blocks.
class PlayHead {
public:
    /// @p frames (of the output's timeline, see Output.h) had been heard at @p nowNs
    /// (CLOCK_MONOTONIC): it is so.
    void Publish(std::int64_t frames, std::int64_t nowNs) noexcept;

    /// The same, but the device estimates it. When they are kept from running, sound servers may be
    /// milliseconds off for seconds, and some repeat an old position as if it were new; a device's
    /// own clock is steady. So what contradicts the reports before is believed little by little,
    /// and altogether only if it is far off and reports of the next moments say the same.
    void Follow(std::int64_t frames, std::int64_t nowNs) noexcept;

    /// Frames heard by @p nowNs if the device runs on at its nominal rate; 0 before the first
    /// report.
    std::int64_t Extrapolate(std::int64_t nowNs) const noexcept;

    /// The same, but never more than @p handedOut and never less than was answered before.
    std::int64_t HeardFrames(std::int64_t nowNs, std::int64_t handedOut) noexcept;

private:
    bool IsConfirmed(std::int64_t begin, std::int64_t nowNs) noexcept;

    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    // At the nominal rate, when frame 0 tells when all others are heard.
    std::atomic<std::int64_t> beginNs{never};
    std::atomic<std::int64_t> lastAnswer{0};
    // The reporting threads only:
    std::int64_t reportedNs = 0;
    std::int64_t farBeginNs = never; // what reports that are far off agree on,
    std::int64_t farSinceNs = 0;     // and since when they do
};

} // namespace sound
