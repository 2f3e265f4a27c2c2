// The callback side of one opened device.
#include "OutputTimeline.h"

#include <algorithm>
#include <cstdlib>

namespace sound {

static constexpr std::int64_t millisecondNs = 1'000'000;
static constexpr std::int64_t shortestTrialNs = 20 * millisecondNs;
static constexpr std::int64_t trialTolerance = outputRateHz / 200;
static constexpr std::int64_t paceWindowNs = 1000 * millisecondNs;

// How much a device may request at once, and how far it may briefly be from its nominal rate: it
// fills its buffers first, and catches up after a delay.
static constexpr std::int64_t burstFrames = outputRateHz / 2;

// Frames that may be between the callback and the listener; a device that claims more is wrong.
static constexpr std::int64_t longestLatency = longestWay - burstFrames;

// How long a device may be late. One with estimated positions has a buffer of 200 ms besides; one
// with exact positions has a cycle, and recovers sooner than it could be reopened.
static constexpr std::int64_t shortGrace = outputRateHz / 10;
static constexpr std::int64_t longGrace = outputRateHz * 3 / 10;

// A device with exact positions has an empty buffer when a cycle begins: while its request is a
// little late, the frames it will request are already heard. After that there is an underrun.
static constexpr std::int64_t longestLate = outputRateHz / 100;

bool DeviceFeed::Render(float* block, std::int32_t frames, std::int64_t playedFrames,
                        std::int64_t reportedNs) noexcept {
    std::fill_n(block, 2 * static_cast<std::int64_t>(frames), 0.0F);
    wasAsked.store(true, std::memory_order_relaxed);
    if (!HasFailed() && !IsPacePlausible(frames, reportedNs)) {
        Fail();
    }
    if (HasFailed()) {
        return false;
    }
    playedFrames = playedFrames < handedOut - longestLatency ? unknownPosition
                                                             : std::min(playedFrames, handedOut);
    if (Enter(playedFrames, reportedNs)) {
        Play(block, frames, playedFrames, reportedNs);
        timeline.LeaveTo(this);
        if (HasFailed()) { // perhaps before it was the driver
            timeline.MarkFailed(*this);
        }
    } else if (HasPlayed() && !timeline.GetState().closed) {
        Fail(); // given up
        return false;
    }
    handedOut += frames;
    return true;
}

// Occupies the timeline, of which it is the driver from then on; false: it gets zeros.
bool DeviceFeed::Enter(std::int64_t playedFrames, std::int64_t reportedNs) noexcept {
    if (HasPlayed()) {
        return timeline.TryOccupy(OutputTimeline::FreeOf(this));
    }
    if (!IsTrusted(playedFrames, reportedNs) ||
        !timeline.TryOccupy(OutputTimeline::FreeOf(nullptr))) {
        return false;
    }
    TakeOver(playedFrames, reportedNs);
    return true;
}

void DeviceFeed::Fail() noexcept {
    failed.store(true);
    timeline.MarkFailed(*this);
}

// Compares the frames requested with real time: a device without hardware takes any amount, one
// that plays does not fall behind for long.
bool DeviceFeed::IsPacePlausible(std::int32_t frames, std::int64_t reportedNs) noexcept {
    if (handedOut == 0) {
        paceNs = reportedNs;
    }
    const std::int64_t expected = FramesIn(reportedNs - paceNs);
    const std::int64_t asked = handedOut + frames - paceFrames;
    const bool tooSlow = asked < expected - burstFrames && HasPlayed();
    if (asked > expected + burstFrames || tooSlow) {
        return false;
    }
    if (reportedNs - paceNs >= paceWindowNs) {
        paceNs = reportedNs;
        paceFrames = handedOut + frames;
    }
    return true;
}

// Whether its position has advanced in real time for a while. Some devices play nothing for seconds
// after they were started; one with exact positions requests nothing until it plays.
bool DeviceFeed::IsTrusted(std::int64_t playedFrames, std::int64_t reportedNs) noexcept {
    if (playedFrames == unknownPosition) {
        return false;
    }
    if (reports == Reports::Exact) {
        return true;
    }
    const std::int64_t expected = FramesIn(reportedNs - trialNs);
    const std::int64_t played = playedFrames - trialFrames;
    if (trialNs == 0 || std::abs(played - expected) > expected / 4 + trialTolerance) {
        trialNs = reportedNs;
        trialFrames = playedFrames;
    }
    return reportedNs - trialNs >= shortestTrialNs;
}

// The next frame given to the device will be heard once the handedOut - playedFrames before it are.
// It has to be the timeline's frame that the silent output would have reached at that moment. (Not
// the position returned last, which may be later than the report.)
void DeviceFeed::TakeOver(std::int64_t playedFrames, std::int64_t reportedNs) noexcept {
    const std::int64_t ready = timeline.handedOut.load();
    const std::int64_t heard = std::min(timeline.playHead.Extrapolate(reportedNs), ready);
    const std::int64_t next = heard + handedOut - playedFrames;
    timeline.Discard(next - ready);
    silenceLeft = std::max<std::int64_t>(ready - next, 0);
    gain = timeline.discardedSound ? 0.0F : 1.0F;
    offset = next - handedOut;
    timeline.graceFrames.store(reports == Reports::Exact ? longGrace : shortGrace);
    hasPlayed.store(true);
    paceNs = reportedNs;
    paceFrames = handedOut;
}

void DeviceFeed::Play(float* block, std::int32_t frames, std::int64_t playedFrames,
                      std::int64_t reportedNs) noexcept {
    if (playedFrames != unknownPosition && reports == Reports::Exact) {
        timeline.playHead.Publish(playedFrames + offset, reportedNs);
        timeline.lateFrames.store(std::min<std::int64_t>(frames, longestLate));
    } else if (playedFrames != unknownPosition) {
        timeline.playHead.Follow(playedFrames + offset, reportedNs);
    }
    const std::int64_t silent = std::min<std::int64_t>(silenceLeft, frames);
    silenceLeft -= silent;
    timeline.Render(block + 2 * silent, static_cast<std::int32_t>(frames - silent));
    for (std::int64_t i = silent; i < frames && gain < 1.0F; ++i) {
        gain = std::min(gain + largestGainStep, 1.0F);
        block[2 * i] *= gain;
        block[2 * i + 1] *= gain;
    }
}

} // namespace sound
