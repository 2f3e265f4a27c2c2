// The most recent part of the mix, kept for the spectrum.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

namespace sound {

/// The latest stereo frames of the mix, addressed by their number on the output's timeline.
/// Append: one thread at a time, real-time. Copy: any thread; neither blocks.
class MixHistory {
public:
    /// @p capacityFrames: a power of two.
    explicit MixHistory(std::int64_t capacityFrames);

    void Append(const float* frames, std::int32_t count) noexcept;

    /// Writes to @p samples one side (@p side 0 left, 1 right) of the @p count frames before
    /// frame @p end, or the newest ones if @p end has not been mixed yet. Frames that were never
    /// mixed, or have been overwritten, read 0.
    void Copy(std::int64_t end, int side, float* samples, std::int32_t count) const noexcept;

private:
    // Aligned as a whole, so that one instruction moves it.
    struct alignas(2 * sizeof(float)) Frame {
        float side[2];
    };

    std::int64_t capacity;
    std::unique_ptr<std::atomic<Frame>[]> data;
    // Frames before `finished` are written; those before `begun` minus the capacity are gone.
    std::atomic<std::int64_t> begun{0};
    std::atomic<std::int64_t> finished{0};
};

} // namespace sound
