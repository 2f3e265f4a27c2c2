#include "PlayHead.h"

#include "Output.h"

#include <algorithm>
#include <cstdlib>

namespace sound {

// Farther off than any server's estimates: playback was interrupted, or the device changed.
static constexpr std::int64_t farNs = 10'000'000;

// Then reports agree with each other from the first on. Those that repeat a position drift by more
// than this within that time.
static constexpr std::int64_t agreementNs = 2'000'000;
static constexpr std::int64_t confirmationNs = 250'000'000;

// A deviation is corrected by 0.5 ms a second, more than any device's clock drifts, or by an eighth
// of itself if that is more; by half of itself if it is far, as reports that never agree are.
static constexpr std::int64_t parts = 2000;
static constexpr std::int64_t correctionNs = 8'000'000'000;
static constexpr std::int64_t farCorrectionNs = 2'000'000'000;
static constexpr std::int64_t longestStepNs = 100'000'000;

void PlayHead::Publish(std::int64_t frames, std::int64_t nowNs) noexcept {
    beginNs.store(nowNs - NsUntil(frames), std::memory_order_relaxed);
    reportedNs = nowNs;
    farBeginNs = never;
}

void PlayHead::Follow(std::int64_t frames, std::int64_t nowNs) noexcept {
    const std::int64_t begin = beginNs.load(std::memory_order_relaxed);
    const std::int64_t reported = nowNs - NsUntil(frames);
    const bool far = begin == never || std::abs(reported - begin) > farNs;
    if (begin == never || (far && IsConfirmed(reported, nowNs))) {
        Publish(frames, nowNs);
        return;
    }
    farBeginNs = far ? farBeginNs : never;
    const std::int64_t stepNs = std::min(nowNs - reportedNs, longestStepNs);
    const std::int64_t limit = std::max(stepNs / parts, std::abs(reported - begin) * stepNs /
                                                            (far ? farCorrectionNs : correctionNs));
    beginNs.store(begin + std::clamp(reported - begin, -limit, limit), std::memory_order_relaxed);
    reportedNs = nowNs;
}

bool PlayHead::IsConfirmed(std::int64_t begin, std::int64_t nowNs) noexcept {
    if (farBeginNs == never || std::abs(begin - farBeginNs) > agreementNs) {
        farBeginNs = begin;
        farSinceNs = nowNs;
    }
    return nowNs - farSinceNs >= confirmationNs;
}

std::int64_t PlayHead::Extrapolate(std::int64_t nowNs) const noexcept {
    const std::int64_t begin = beginNs.load(std::memory_order_relaxed);
    return begin == never ? 0 : FramesIn(nowNs - begin);
}

std::int64_t PlayHead::HeardFrames(std::int64_t nowNs, std::int64_t handedOut) noexcept {
    const std::int64_t heard = std::min(Extrapolate(nowNs), handedOut);
    std::int64_t last = lastAnswer.load(std::memory_order_relaxed);
    while (heard > last && !lastAnswer.compare_exchange_weak(last, heard)) {
    }
    return std::max(heard, last);
}

} // namespace sound
