#include "CycleRing.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace bench {

bool CycleRing::Write(const SinkBlock& block, const float* left, const float* right) {
    const std::uint64_t size = sizeof(block) + static_cast<std::uint64_t>(block.size);
    std::uint64_t at = written.load(std::memory_order_relaxed);
    if (at + size - read.load(std::memory_order_acquire) > capacity) {
        return false;
    }
    Put(at, &block, sizeof(block));
    at += sizeof(block);
    const std::int64_t count = block.size / static_cast<std::int64_t>(2 * sizeof(float));
    for (std::int64_t i = 0; i < count; ++i) {
        const std::array<float, 2> frame = {left == nullptr ? 0.0F : left[i],
                                            right == nullptr ? 0.0F : right[i]};
        Put(at, frame.data(), sizeof(frame));
        at += sizeof(frame);
    }
    written.store(at, std::memory_order_release);
    return true;
}

void CycleRing::MoveTo(std::ofstream& log) {
    const std::uint64_t end = written.load(std::memory_order_acquire);
    std::uint64_t at = read.load(std::memory_order_relaxed);
    while (at < end) {
        const std::uint64_t place = at % capacity;
        const std::uint64_t size = std::min(end - at, capacity - place);
        log.write(bytes.data() + place, static_cast<std::streamsize>(size));
        at += size;
    }
    log.flush();
    read.store(at, std::memory_order_release);
}

// Blocks and frames are multiples of 8 bytes, as the capacity is.
void CycleRing::Put(std::uint64_t at, const void* data, std::size_t size) {
    const auto* from = static_cast<const char*>(data);
    for (std::size_t i = 0; i < size; i += 8) {
        std::memcpy(bytes.data() + (at + i) % capacity, from + i, 8);
    }
}

} // namespace bench
