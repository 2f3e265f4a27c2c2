// The format of the log of what a sink played when, one block after the other. SinkLog.cpp and
// GraphTap.cpp write it, GroundTruth reads it.
#pragma once

#include <cstdint>

namespace bench {

/// Precedes the frames of each block, left and right as floats.
struct SinkBlock {
    std::int64_t heardNs; ///< CLOCK_MONOTONIC of its first frame
    std::int64_t rateHz;
    std::int64_t follows; ///< 1: its first frame directly follows the previous block; 0: only its
                          ///< time says where it belongs
    std::int64_t size;    ///< of the frames, in bytes
};

} // namespace bench
