#include "Voice.h"

#include <algorithm>
#include <cmath>

namespace sound {

// The longest fade, from full to silence.
static constexpr auto fadeFrames = static_cast<std::size_t>(1.0F / largestGainStep);

Voice::Voice(Stream& playedStream, bool startPaused) : stream(playedStream), paused(startPaused) {}

void Voice::MixInto(float* block, std::int32_t count, std::int64_t outputFrame) noexcept {
    if (MusicTime::IsOver(state)) {
        return;
    }
    // Before the frames: the answer covers everything decoded until now.
    const Stream::Supply supply = stream.GetSupply();
    WatchForUnderrun(count, supply);
    const float target =
        IsPaused() || IsMute() || underrun ? 0.0F : volume.load(std::memory_order_relaxed);
    if (musicFrame == 0) {
        gain = target; // nothing was heard yet, so nothing can click: no ramp at the start
    }
    const std::int32_t wanted = FramesWanted(count, target);
    const auto got =
        static_cast<std::int32_t>(stream.Read(frames.data(), static_cast<std::size_t>(wanted)));
    if (got > 0) {
        SetState(outputFrame, MusicTime::State::Running);
    }
    AddTo(block, got, target);
    musicFrame += got;
    if (got < wanted && supply == Stream::Supply::Ended) {
        SetState(outputFrame + got, MusicTime::State::Ended);
    } else if (got < wanted && supply == Stream::Supply::Broken) {
        SetState(outputFrame + got, MusicTime::State::Broken);
    } else if (got < count) {
        SetState(outputFrame + got, MusicTime::State::Halted);
    }
}

// An underrun begins while there are still frames left to fade out with.
void Voice::WatchForUnderrun(std::int32_t count, Stream::Supply supply) noexcept {
    const std::size_t needed =
        static_cast<std::size_t>(count) + (underrun ? startFrames : fadeFrames);
    const bool before = underrun;
    underrun = supply == Stream::Supply::Decoding && stream.Available() < needed;
    if (underrun && !before && !IsPaused()) {
        underruns.fetch_add(1, std::memory_order_relaxed);
    }
}

void Voice::AddTo(float* block, std::int32_t count, float target) noexcept {
    const std::size_t samples = 2 * static_cast<std::size_t>(count);
    std::size_t i = 0;
    for (; i < samples && gain != target; i += 2) {
        gain += std::clamp(target - gain, -largestGainStep, largestGainStep);
        block[i] += gain * frames[i];
        block[i + 1] += gain * frames[i + 1];
    }
    for (; i < samples; ++i) {
        block[i] += target * frames[i];
    }
}

// In a pause or an underrun the music continues until it has faded out.
std::int32_t Voice::FramesWanted(std::int32_t count, float target) const noexcept {
    if (target > 0.0F || !(IsPaused() || underrun)) {
        return count;
    }
    return std::min(count, static_cast<std::int32_t>(std::ceil(gain / largestGainStep)));
}

void Voice::SetState(std::int64_t outputFrame, MusicTime::State next) noexcept {
    if (next != state) {
        state = next;
        time.Mark(outputFrame, musicFrame, next);
    }
}

void Voice::WaitUntilReady(std::int32_t count) {
    if (!MusicTime::IsOver(state)) {
        // A decoder that takes longer than this is not decoding any more.
        stream.WaitUntilReady(static_cast<std::size_t>(count) + startFrames,
                              std::chrono::seconds(60));
    }
}

} // namespace sound
