#include "Ring.h"

#include <algorithm>

namespace sound {

Ring::Ring(std::size_t capacityFrames)
    : capacity(capacityFrames), data(std::make_unique<float[]>(2 * capacityFrames)) {}

std::size_t Ring::Free() const noexcept {
    return capacity -
           (written.load(std::memory_order_relaxed) - read.load(std::memory_order_acquire));
}

void Ring::Write(const float* frames, std::size_t count) noexcept {
    const std::size_t end = written.load(std::memory_order_relaxed);
    const std::size_t start = end % capacity;
    const std::size_t first = std::min(count, capacity - start);
    std::copy_n(frames, 2 * first, &data[2 * start]);
    std::copy_n(frames + 2 * first, 2 * (count - first), &data[0]);
    written.store(end + count, std::memory_order_release);
}

std::size_t Ring::Available() const noexcept {
    // The index that was read first can only be too low: those frames are available.
    const std::size_t taken = read.load(std::memory_order_acquire);
    return written.load(std::memory_order_acquire) - taken;
}

std::size_t Ring::Read(float* frames, std::size_t count) noexcept {
    const std::size_t taken = read.load(std::memory_order_relaxed);
    count = std::min(count, written.load(std::memory_order_acquire) - taken);
    const std::size_t start = taken % capacity;
    const std::size_t first = std::min(count, capacity - start);
    std::copy_n(&data[2 * start], 2 * first, frames);
    std::copy_n(&data[0], 2 * (count - first), frames + 2 * first);
    read.store(taken + count, std::memory_order_release);
    return count;
}

void Ring::Reset() noexcept {
    written.store(0, std::memory_order_relaxed);
    read.store(0, std::memory_order_relaxed);
}

} // namespace sound
