// Decoded music on its way from the decode thread to the output callback.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>

namespace sound {

/// A lock-free queue of stereo frames (left, right) for one writing and one reading thread.
class Ring {
public:
    explicit Ring(std::size_t capacityFrames);

    /// Writing thread: room left, in frames.
    std::size_t Free() const noexcept;

    /// Writing thread: appends @p count frames, at most Free().
    void Write(const float* frames, std::size_t count) noexcept;

    /// Any thread: frames that can be read.
    std::size_t Available() const noexcept;

    /// Reading thread: moves up to @p count frames to @p frames; returns how many.
    std::size_t Read(float* frames, std::size_t count) noexcept;

    /// Empties it; only while neither thread is using it.
    void Reset() noexcept;

private:
    std::size_t capacity;
    std::unique_ptr<float[]> data;
    std::atomic<std::size_t> written{0};
    std::atomic<std::size_t> read{0};
};

} // namespace sound
