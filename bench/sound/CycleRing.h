// Passes cycles of PipeWire's graph from its real-time thread to a file.
#pragma once

#include "SinkLog.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <vector>

namespace bench {

/// One thread writes, one moves.
class CycleRing {
public:
    CycleRing() : bytes(capacity) {}

    /// Two channels of block.size bytes together; null: silence. No locks, allocation or system
    /// calls. False: the ring is full.
    bool Write(const SinkBlock& block, const float* left, const float* right);

    /// Appends everything written to the log, in the format of SinkLog.h.
    void MoveTo(std::ofstream& log);

private:
    static constexpr std::uint64_t capacity = std::uint64_t{1} << 23; // 20 s

    void Put(std::uint64_t at, const void* data, std::size_t size);

    std::vector<char> bytes;
    std::atomic<std::uint64_t> written{0};
    std::atomic<std::uint64_t> read{0};
};

} // namespace bench
