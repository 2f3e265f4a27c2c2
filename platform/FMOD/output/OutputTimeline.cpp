#include "OutputTimeline.h"

#include <algorithm>
#include <thread>

namespace sound {

// Render-ahead of the silent output, so that a watchdog thread that is a little late does no harm.
static constexpr std::int64_t renderAhead = outputRateHz / 10;

OutputTimeline::OutputTimeline(const Source& played, std::int64_t nowNs) : source(played) {
    playHead.Publish(0, nowNs);
    AdvanceSilence(nowNs);
}

std::int64_t OutputTimeline::HeardFrames(std::int64_t nowNs) noexcept {
    return playHead.HeardFrames(nowNs,
                                handedOut.load(std::memory_order_acquire) + lateFrames.load());
}

void OutputTimeline::AdvanceSilence(std::int64_t nowNs) noexcept {
    if (IsSounding() || !TryEnter()) {
        return;
    }
    if (!IsSounding() && !closed) {
        Discard(playHead.Extrapolate(nowNs) + renderAhead - handedOut.load());
    }
    Leave();
}

bool OutputTimeline::FallSilentIfLost(std::int64_t nowNs) noexcept {
    if (!IsLost(nowNs)) {
        return false;
    }
    Enter();
    const bool lost = IsLost(nowNs); // the device may just have recovered
    if (lost) {
        FallSilent(nowNs);
    }
    Leave();
    return lost;
}

bool OutputTimeline::IsLost(std::int64_t nowNs) noexcept {
    return IsSounding() && (driverFailed.load() ||
                            playHead.Extrapolate(nowNs) > handedOut.load() + graceFrames.load());
}

std::int64_t OutputTimeline::TimeUntilLostNs(std::int64_t nowNs) const noexcept {
    const std::int64_t frames = handedOut.load() + graceFrames.load() - playHead.Extrapolate(nowNs);
    return IsSounding() ? NsUntil(std::max<std::int64_t>(frames + 1, 0)) : 0;
}

void OutputTimeline::Forget(const DeviceFeed& feed, std::int64_t nowNs) noexcept {
    Enter();
    if (driver.load() == &feed) {
        FallSilent(nowNs);
    }
    Leave();
}

void OutputTimeline::Close() noexcept {
    Enter();
    closed = true;
    Leave();
}

// Frames that the device had but did not play count as heard, so that the clock continues.
void OutputTimeline::FallSilent(std::int64_t nowNs) noexcept {
    playHead.Publish(HeardFrames(nowNs), nowNs);
    lateFrames.store(0);
    driver.load()->failed.store(true);
    driver.store(nullptr);
    driverFailed.store(false);
}

void OutputTimeline::Enter() noexcept {
    while (!TryEnter()) {
        std::this_thread::yield();
    }
}

void OutputTimeline::Render(float* block, std::int32_t frames) noexcept {
    source.render(source.context, block, frames);
    handedOut.fetch_add(frames, std::memory_order_release);
}

void OutputTimeline::Discard(std::int64_t frames) noexcept {
    constexpr std::int64_t blockFrames = std::tuple_size_v<decltype(discarded)> / 2;
    while (frames > 0) {
        const std::int64_t block = std::min(frames, blockFrames);
        Render(discarded.data(), static_cast<std::int32_t>(block));
        frames -= block;
    }
}

} // namespace sound
