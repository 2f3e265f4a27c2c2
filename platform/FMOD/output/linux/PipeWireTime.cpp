#include "PipeWireTime.h"

#include "OutputTimeline.h"

#include <pipewire/stream.h>

#include <cmath>
#include <cstdlib>

namespace sound {

// A report farther from now than this is not of the current cycle.
static constexpr std::int64_t oldestNs = 1'000'000'000;

// No output has more latency, not even a wireless one.
static constexpr std::int64_t longestFrames = 10 * outputRateHz;

static bool IsPossible(std::uint64_t frames) {
    return frames <= static_cast<std::uint64_t>(longestFrames);
}

// The delay in frames, or more than is possible.
static double DelayFrames(const pw_time& time) {
    return static_cast<double>(time.delay) * static_cast<double>(outputRateHz) *
           static_cast<double>(time.rate.num) / static_cast<double>(time.rate.denom);
}

PlayReport ReportOf(const pw_time& time, std::int64_t writtenFrames, std::int64_t nowNs) noexcept {
    const bool timed = time.now > nowNs - oldestNs && time.now < nowNs + oldestNs;
    if (!timed || time.rate.num == 0 || time.rate.denom == 0 || !IsPossible(time.queued) ||
        !IsPossible(time.buffered)) {
        return {unknownPosition, nowNs};
    }
    const double delay = DelayFrames(time);
    if (std::abs(delay) > static_cast<double>(longestFrames)) {
        return {unknownPosition, nowNs};
    }
    const auto ahead = static_cast<std::int64_t>(time.queued + time.buffered);
    return {writtenFrames - ahead - std::llround(delay), time.now};
}

} // namespace sound
