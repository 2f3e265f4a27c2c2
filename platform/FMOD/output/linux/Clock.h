// The clock of the live output.
#pragma once

#include <cstdint>
#include <ctime>

namespace sound {

/// CLOCK_MONOTONIC, in ns.
inline std::int64_t MonotonicNs() noexcept {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

} // namespace sound
