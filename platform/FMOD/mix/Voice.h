// One playback of a stream: volume, mute, pause and position.
#pragma once

#include "MusicTime.h"

#include "Stream.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace sound {

/// Setters and getters: any thread. MixInto and WaitUntilReady: the output's thread.
class Voice {
public:
    static constexpr std::int32_t longestBlock = 512;

    /// That many decoded frames, a tenth of a second, are enough to start.
    static constexpr std::size_t startFrames = outputRateHz / 10;

    /// @p stream must outlive it and be at its beginning.
    Voice(Stream& stream, bool paused);

    /// @p value: linear, 0..1.
    void SetVolume(float value) noexcept { volume.store(value, std::memory_order_relaxed); }

    void SetMute(bool value) noexcept { mute.store(value, std::memory_order_relaxed); }
    bool IsMute() const noexcept { return mute.load(std::memory_order_relaxed); }

    void SetPaused(bool value) noexcept { paused.store(value, std::memory_order_relaxed); }
    bool IsPaused() const noexcept { return paused.load(std::memory_order_relaxed); }

    /// The music heard with @p outputFrame.
    MusicTime::Moment At(std::int64_t outputFrame) const noexcept { return time.At(outputFrame); }

    /// How often the decoder did not keep up with the output. The music then fades out, and in
    /// again where it halted, once enough is decoded.
    std::uint32_t Underruns() const noexcept { return underruns.load(std::memory_order_relaxed); }

    /// Real-time. Adds its next @p count (up to longestBlock) frames to @p block, which begins
    /// with @p outputFrame. All changes of level are ramps.
    void MixInto(float* block, std::int32_t count, std::int64_t outputFrame) noexcept;

    /// As Source::waitUntilReady.
    void WaitUntilReady(std::int32_t count);

private:
    void WatchForUnderrun(std::int32_t count, Stream::Supply supply) noexcept;
    void AddTo(float* block, std::int32_t count, float target) noexcept;
    std::int32_t FramesWanted(std::int32_t count, float target) const noexcept;
    void SetState(std::int64_t outputFrame, MusicTime::State next) noexcept;

    Stream& stream;
    std::atomic<float> volume{1.0F};
    std::atomic<bool> mute{false};
    std::atomic<bool> paused;
    std::atomic<std::uint32_t> underruns{0};
    MusicTime time;

    // The output's thread only:
    std::array<float, 2 * std::size_t{longestBlock}> frames;
    float gain = 0.0F;
    bool underrun = false;
    std::int64_t musicFrame = 0; // the next one
    MusicTime::State state = MusicTime::State::Halted;
};

} // namespace sound
