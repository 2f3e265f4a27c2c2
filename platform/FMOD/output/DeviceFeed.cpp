// What the callback of one opened device does.
#include "OutputTimeline.h"

#include <algorithm>
#include <cstdlib>

namespace sound {

static constexpr std::int64_t millisecondNs = 1'000'000;
static constexpr std::int64_t shortestTrialNs = 20 * millisecondNs;
static constexpr std::int64_t trialTolerance = outputRateHz / 200;
static constexpr std::int64_t paceWindowNs = 1000 * millisecondNs;

// A device may ask for this much at once, and be this far from its nominal rate for a moment: it
// fills its buffers first, and catches up after a delay.
static constexpr std::int64_t burstFrames = outputRateHz / 2;

// Frames that may be between the callback and the listener; a device that claims more is wrong.
static constexpr std::int64_t longestWay = outputRateHz / 2;

// How long a device may be late. One that estimates has 200 ms in hand besides; one that knows has
// a cycle, and comes back by itself sooner than it could be opened anew.
static constexpr std::int64_t shortGrace = outputRateHz / 10;
static constexpr std::int64_t longGrace = outputRateHz * 3 / 10;

// A device that knows has nothing in hand when a cycle begins: until it comes to ask, a little
// late, what it will ask for is already heard. Later than that nothing is.
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
    playedFrames = std::min(playedFrames, handedOut);
    if (timeline.TryEnter()) {
        const bool plays = timeline.driver.load() == this || (IsTrusted(playedFrames, reportedNs) &&
                                                              TakeOver(playedFrames, reportedNs));
        if (plays && !timeline.closed && !HasFailed()) {
            Play(block, frames, playedFrames, reportedNs);
        }
        timeline.Leave();
    }
    handedOut += frames;
    return true;
}

void DeviceFeed::Fail() noexcept {
    failed.store(true);
    if (timeline.driver.load() == this) {
        timeline.driverFailed.store(true);
    }
}

// Compares what is asked for with the time that passes: a device that is none takes any amount, one
// that plays does not fall behind for long.
bool DeviceFeed::IsPacePlausible(std::int32_t frames, std::int64_t reportedNs) noexcept {
    if (handedOut == 0) {
        paceNs = reportedNs;
    }
    const std::int64_t expected = FramesIn(reportedNs - paceNs);
    const std::int64_t asked = handedOut + frames - paceFrames;
    const bool tooSlow = asked < expected - burstFrames && timeline.driver.load() == this;
    if (asked > expected + burstFrames || tooSlow) {
        return false;
    }
    if (reportedNs - paceNs >= paceWindowNs) {
        paceNs = reportedNs;
        paceFrames = handedOut + frames;
    }
    return true;
}

// Whether its position has moved as time has for a moment. Some devices play nothing for seconds
// after they were started; one that knows its time asks for nothing until it plays.
bool DeviceFeed::IsTrusted(std::int64_t playedFrames, std::int64_t reportedNs) noexcept {
    if (playedFrames == unknownPosition || handedOut - playedFrames > longestWay) {
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
// The timeline's frame that silence would have played at that moment is to be that frame. (Not what
// was answered last: that may have been later than the report.)
bool DeviceFeed::TakeOver(std::int64_t playedFrames, std::int64_t reportedNs) noexcept {
    if (timeline.IsSounding() || timeline.closed) {
        return false;
    }
    const std::int64_t ready = timeline.handedOut.load();
    const std::int64_t heard = std::min(timeline.playHead.Extrapolate(reportedNs), ready);
    const std::int64_t next = heard + handedOut - playedFrames;
    timeline.Discard(next - ready);
    silenceLeft = std::max<std::int64_t>(ready - next, 0);
    offset = next - handedOut;
    timeline.driverFailed.store(false);
    timeline.graceFrames.store(reports == Reports::Exact ? longGrace : shortGrace);
    timeline.driver.store(this);
    hasPlayed.store(true);
    paceNs = reportedNs;
    paceFrames = handedOut;
    return true;
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
}

} // namespace sound
