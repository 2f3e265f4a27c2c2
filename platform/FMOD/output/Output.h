// The seam between the sound library and the output that plays its mix; device and clock are below
// it.
//
// The frames of the mix are numbered 0, 1, 2, ... in the order in which the output requests them.
// That is the output's timeline, which continues across devices. Several libraries define these
// functions; an executable links one.
#pragma once

#include <cstdint>
#include <memory>

namespace sound {

inline constexpr std::int64_t outputRateHz = 44100;

/// Fewer frames than this have been requested, but not heard yet.
inline constexpr std::int64_t longestWay = outputRateHz;

/// The largest change of level from one frame to the next that does not click: from silence to full
/// in 512 frames (12 ms).
inline constexpr float largestGainStep = 1.0F / 512.0F;

/// Whole frames that pass in @p ns at the output's rate.
constexpr std::int64_t FramesIn(std::int64_t ns) {
    return ns * (outputRateHz / 100) / (1'000'000'000 / 100);
}

/// The time in ns after which @p frames (>= 0) have passed at the output's rate, rounded up.
constexpr std::int64_t NsUntil(std::int64_t frames) {
    return (frames * (1'000'000'000 / 100) + outputRateHz / 100 - 1) / (outputRateHz / 100);
}

/// Where the output gets its frames. The functions receive @p context; it must outlive the output.
struct Source {
    void* context;

    /// Writes the timeline's next @p frames frames (left, right) to @p block. Never blocks; one
    /// thread at a time.
    void (*render)(void* context, float* block, std::int32_t frames) noexcept;

    /// Waits until the next @p frames frames (at most half a second) can be rendered without an
    /// underrun, unless the decoder has no more. For outputs in virtual time; not for an output
    /// callback.
    void (*waitUntilReady)(void* context, std::int32_t frames) noexcept;
};

struct Output;

struct StopOutput {
    /// Stops playback: when it returns, the source is no longer used. A device that hangs is
    /// abandoned after 40 ms.
    void operator()(Output* output) const noexcept;
};

using OutputHandle = std::unique_ptr<Output, StopOutput>;

/// Plays @p source until stopped, with or without a device. Throws std::bad_alloc or
/// std::system_error when out of memory or threads.
OutputHandle StartOutput(const Source& source);

/// Before something is played: waits for a device that is being opened, at most 40 ms for it to
/// open and 300 ms for it to start playing.
void AwaitDevice(Output& output) noexcept;

/// The number of the timeline's frames heard by now. Never decreases, and never exceeds the frames
/// requested by more than the 10 ms by which a device's callback may be late. Never blocks.
std::int64_t HeardFrames(Output& output) noexcept;

} // namespace sound
