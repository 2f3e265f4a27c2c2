#include "MixHistory.h"

#include <algorithm>

namespace sound {

MixHistory::MixHistory(std::int64_t capacityFrames)
    : capacity(capacityFrames),
      data(std::make_unique<std::atomic<Frame>[]>(static_cast<std::size_t>(capacityFrames))) {
    static_assert(std::atomic<Frame>::is_always_lock_free);
}

void MixHistory::Append(const float* frames, std::int32_t count) noexcept {
    const std::int64_t start = finished.load(std::memory_order_relaxed);
    begun.store(start + count, std::memory_order_relaxed);
    for (std::int64_t i = 0; i < count; ++i) {
        const Frame frame = {{frames[2 * i], frames[2 * i + 1]}};
        data[static_cast<std::size_t>((start + i) & (capacity - 1))].store(
            frame, std::memory_order_release);
    }
    finished.store(start + count, std::memory_order_release);
}

void MixHistory::Copy(std::int64_t end, int side, float* samples,
                      std::int32_t count) const noexcept {
    end = std::min(end, finished.load(std::memory_order_acquire));
    const std::int64_t start = end - count;
    for (std::int64_t number = start; number < end; ++number) {
        samples[number - start] = number >= 0
                                      ? data[static_cast<std::size_t>(number & (capacity - 1))]
                                            .load(std::memory_order_acquire)
                                            .side[side]
                                      : 0.0F;
    }
    // Frames that the writer has reached since may have been overwritten before they were copied.
    const std::int64_t oldest = begun.load(std::memory_order_relaxed) - capacity;
    const std::int64_t lost = std::clamp<std::int64_t>(oldest - start, 0, count);
    std::fill_n(samples, lost, 0.0F);
}

} // namespace sound
