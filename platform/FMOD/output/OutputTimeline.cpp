#include "OutputTimeline.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace sound {

// Render-ahead of the silent output, so that a watchdog thread that is a little late does no harm.
static constexpr std::int64_t renderAhead = outputRateHz / 10;

// How far the silent output catches up with real time after a device was lost: what the longest
// grace and a late watchdog thread take, and the decoder has ready. A process that was stopped for
// longer continues where it was.
static constexpr std::int64_t longestCatchUp = outputRateHz / 2;

// For a thread that must wait for another one: with real-time priority, it would keep that one from
// running if it did anything but sleep.
static constexpr std::chrono::microseconds nap{500};

static constexpr std::uintptr_t occupiedFlag = 1;
static constexpr std::uintptr_t failedFlag = 2;
static constexpr std::uintptr_t closedFlag = 4;
static constexpr std::uintptr_t flags = occupiedFlag | failedFlag | closedFlag;
static_assert(alignof(DeviceFeed) > flags);

static DeviceFeed* DriverIn(std::uintptr_t state) {
    return reinterpret_cast<DeviceFeed*>(state & ~flags);
}

OutputTimeline::OutputTimeline(const Source& played, std::int64_t nowNs) : source(played) {
    playHead.Publish(0, nowNs);
    AdvanceSilence(nowNs);
}

OutputTimeline::State OutputTimeline::GetState() const noexcept {
    const std::uintptr_t now = state.load();
    return {DriverIn(now), (now & occupiedFlag) != 0, (now & failedFlag) != 0,
            (now & closedFlag) != 0};
}

// False: another thread was first.
bool OutputTimeline::TryOccupy(std::uintptr_t seen) noexcept {
    return (seen & occupiedFlag) == 0 && state.compare_exchange_strong(seen, seen | occupiedFlag);
}

// Flags that were set meanwhile stay, but for the failure of a driver that is no longer one.
void OutputTimeline::LeaveTo(const DeviceFeed* driver) noexcept {
    const std::uintptr_t kept = driver == nullptr ? closedFlag : closedFlag | failedFlag;
    std::uintptr_t now = state.load();
    while (!state.compare_exchange_weak(now, FreeOf(driver) | (now & kept))) {
    }
}

void OutputTimeline::MarkFailed(const DeviceFeed& feed) noexcept {
    std::uintptr_t now = state.load();
    while (DriverIn(now) == &feed && !state.compare_exchange_weak(now, now | failedFlag)) {
    }
}

std::int64_t OutputTimeline::HeardFrames(std::int64_t nowNs) noexcept {
    return playHead.HeardFrames(nowNs,
                                handedOut.load(std::memory_order_acquire) + lateFrames.load());
}

void OutputTimeline::AdvanceSilence(std::int64_t nowNs) noexcept {
    if (TryOccupy(FreeOf(nullptr))) {
        Discard(playHead.Extrapolate(nowNs) + renderAhead - handedOut.load());
        LeaveTo(nullptr);
    }
}

// A driver that is in its callback is alive, or found to be lost the next time. One whose callback
// comes between the two steps is given up nevertheless.
bool OutputTimeline::FallSilentIfLost(std::int64_t nowNs) noexcept {
    const std::uintptr_t seen = state.load();
    if (!IsLost(seen, nowNs) || !TryOccupy(seen)) {
        return false;
    }
    FallSilent(*DriverIn(seen), nowNs);
    return true;
}

bool OutputTimeline::IsLost(std::uintptr_t seen, std::int64_t nowNs) const noexcept {
    return DriverIn(seen) != nullptr && (seen & closedFlag) == 0 &&
           ((seen & failedFlag) != 0 ||
            playHead.Extrapolate(nowNs) > handedOut.load() + graceFrames.load());
}

std::int64_t OutputTimeline::TimeUntilLostNs(std::int64_t nowNs) const noexcept {
    const std::int64_t frames = handedOut.load() + graceFrames.load() - playHead.Extrapolate(nowNs);
    return IsSounding() ? NsUntil(std::max<std::int64_t>(frames + 1, 0)) : 0;
}

void OutputTimeline::Forget(DeviceFeed& feed, std::int64_t nowNs) noexcept {
    for (std::uintptr_t seen = state.load(); DriverIn(seen) == &feed; seen = state.load()) {
        if (TryOccupy(seen)) {
            FallSilent(feed, nowNs);
        } else {
            std::this_thread::sleep_for(nap);
        }
    }
}

void OutputTimeline::Close() noexcept {
    state.fetch_or(closedFlag);
    while (GetState().occupied) {
        std::this_thread::sleep_for(nap);
    }
}

// The clock continues as if the device had played on. What it did not play counts as heard, and the
// silent output catches up with what it did not request.
void OutputTimeline::FallSilent(DeviceFeed& feed, std::int64_t nowNs) noexcept {
    const std::int64_t heard =
        std::min(playHead.Extrapolate(nowNs), handedOut.load() + longestCatchUp);
    playHead.Publish(std::max(heard, HeardFrames(nowNs)), nowNs);
    lateFrames.store(0);
    feed.failed.store(true);
    LeaveTo(nullptr);
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
        discardedSound = std::any_of(discarded.begin(), discarded.begin() + 2 * block,
                                     [](float sample) { return sample != 0.0F; });
        frames -= block;
    }
}

} // namespace sound
