// The file that says what was heard when, one block after the other. SinkLog.cpp and GraphTap.cpp
// write it, GroundTruth reads it.
#pragma once

#include <cstdint>

namespace bench {

/// Before the frames of each block, left and right as floats.
struct SinkBlock {
    std::int64_t heardNs; ///< CLOCK_MONOTONIC of its first frame
    std::int64_t rateHz;
    std::int64_t follows; ///< 1: its first frame comes next to the last one of the block before; 0:
                          ///< only its time says where it belongs
    std::int64_t size;    ///< of the frames, in bytes
};

} // namespace bench
