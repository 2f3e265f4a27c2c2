// The seam between the sound library and what plays its mix: the device and the clock are behind
// it.
//
// The frames of the mix are numbered 0, 1, 2, ... in the order in which the output asked for them:
// that is the output's timeline, and it goes on whichever device plays it. Several libraries offer
// these functions; an executable links one.
#pragma once

#include <cstdint>
#include <memory>

namespace sound {

inline constexpr std::int64_t outputRateHz = 44100;

/// Whole frames that pass in @p ns at the output's rate.
constexpr std::int64_t FramesIn(std::int64_t ns) {
    return ns * (outputRateHz / 100) / (1'000'000'000 / 100);
}

/// In ns, the first moment at which @p frames (>= 0) have passed at the output's rate.
constexpr std::int64_t NsUntil(std::int64_t frames) {
    return (frames * (1'000'000'000 / 100) + outputRateHz / 100 - 1) / (outputRateHz / 100);
}

/// What is played. The functions get @p context; it must outlive the output.
struct Source {
    void* context;

    /// Writes the timeline's next @p frames frames (left, right) to @p block. Never blocks; one
    /// thread at a time.
    void (*render)(void* context, float* block, std::int32_t frames) noexcept;

    /// Waits until the next @p frames frames (at most half a second) can be rendered in full,
    /// decoder permitting. For an output in virtual time, that would rather wait than hear a gap;
    /// not for an output callback.
    void (*waitUntilReady)(void* context, std::int32_t frames) noexcept;
};

struct Output;

struct StopOutput {
    /// Ends the playing: when it returns, the source is not used any more. A device that hangs is
    /// left behind after 40 ms.
    void operator()(Output* output) const noexcept;
};

using OutputHandle = std::unique_ptr<Output, StopOutput>;

/// Starts to play @p source and goes on until stopped, device or not. Throws std::bad_alloc or
/// std::system_error when memory or threads ran out.
OutputHandle StartOutput(const Source& source);

/// Something is about to be played: gives a device that is just being opened a moment to be ready
/// for it, at most 40 ms to open and 300 ms to begin.
void AwaitDevice(Output& output) noexcept;

/// How many of the timeline's frames are heard by now: never less than was answered before, and no
/// more than were asked for, but for 10 ms by which a device may be late to ask. Never blocks.
std::int64_t HeardFrames(Output& output) noexcept;

} // namespace sound
