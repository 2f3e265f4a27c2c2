// What is heard now, out of what was handed to the device and when.
#include "PlayHead.h"

#include "Output.h"

#include <algorithm>

namespace sound {

// The fields are stored with release and loaded with acquire order instead of fences: a reader that
// sees a new field also sees the odd sequence number before it, and tries again.
void PlayHead::Publish(std::int64_t frames, std::int64_t nowNs) noexcept {
    const std::uint32_t before = sequence.load(std::memory_order_relaxed);
    sequence.store(before + 1, std::memory_order_relaxed);
    reportedFrames.store(frames, std::memory_order_release);
    reportedNs.store(nowNs, std::memory_order_release);
    sequence.store(before + 2, std::memory_order_release);
}

std::int64_t PlayHead::Extrapolate(std::int64_t nowNs) const noexcept {
    for (;;) {
        const std::uint32_t before = sequence.load(std::memory_order_acquire);
        const std::int64_t frames = reportedFrames.load(std::memory_order_acquire);
        const std::int64_t atNs = reportedNs.load(std::memory_order_acquire);
        if (before % 2 == 0 && before == sequence.load(std::memory_order_relaxed)) {
            return before == 0 ? 0 : frames + FramesIn(nowNs - atNs);
        }
    }
}

std::int64_t PlayHead::HeardFrames(std::int64_t nowNs, std::int64_t handedOut) noexcept {
    const std::int64_t heard = std::min(Extrapolate(nowNs), handedOut);
    std::int64_t last = lastAnswer.load(std::memory_order_relaxed);
    while (heard > last && !lastAnswer.compare_exchange_weak(last, heard)) {
    }
    return std::max(heard, last);
}

} // namespace sound
