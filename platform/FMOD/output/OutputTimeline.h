// One sequence of frames, whoever plays it: a device, or silence in real time when there is none.
#pragma once

#include "Output.h"
#include "PlayHead.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <limits>

namespace sound {

class DeviceFeed;

/// What a device says it has played if it cannot tell.
inline constexpr std::int64_t unknownPosition = std::numeric_limits<std::int64_t>::min();

/// Asks the source for its frames and keeps the clock across changes between silence and devices.
/// Has no thread and no clock of its own: others call it with the time (CLOCK_MONOTONIC).
class OutputTimeline {
public:
    /// Silence plays from @p nowNs on.
    OutputTimeline(const Source& source, std::int64_t nowNs);
    OutputTimeline(const OutputTimeline&) = delete;
    OutputTimeline& operator=(const OutputTimeline&) = delete;

    /// Any thread, never blocks: as sound::HeardFrames.
    std::int64_t HeardFrames(std::int64_t nowNs) noexcept;

    /// Any thread: whether a device plays.
    bool IsSounding() const noexcept { return driver.load() != nullptr; }

    /// The watching thread, every few ms: goes on playing silence, if no device plays.
    void AdvanceSilence(std::int64_t nowNs) noexcept;

    /// The watching thread: if the device that plays has failed, or has asked for nothing for too
    /// long, silence takes over at the frame heard now; true when that happened.
    bool FallSilentIfLost(std::int64_t nowNs) noexcept;

    /// Any thread: how long, in ns, until a device that plays now is lost unless it asks for more;
    /// 0 when none plays.
    std::int64_t PatienceNs(std::int64_t nowNs) const noexcept;

    /// Before @p feed goes away: silence takes over if it is the one that plays.
    void Forget(const DeviceFeed& feed, std::int64_t nowNs) noexcept;

    /// When it returns the source is not used any more; the clock stands still.
    void Close() noexcept;

private:
    friend class DeviceFeed;

    /// Whoever renders or changes the driver is inside; a device's callback never waits to enter.
    bool TryEnter() noexcept { return !occupied.exchange(true, std::memory_order_acquire); }
    void Enter() noexcept;
    void Leave() noexcept { occupied.store(false, std::memory_order_release); }

    bool IsLost(std::int64_t nowNs) noexcept;

    // Inside only:
    void FallSilent(std::int64_t nowNs) noexcept;
    void Render(float* block, std::int32_t frames) noexcept;
    void Discard(std::int64_t frames) noexcept;

    Source source;
    PlayHead playHead;
    std::atomic<std::int64_t> handedOut{0};
    std::atomic<DeviceFeed*> driver{nullptr}; // null: silence
    std::atomic<bool> driverFailed{false};
    // How long the driver may ask for nothing after all it had must have been heard.
    std::atomic<std::int64_t> graceFrames{0};
    // How far the clock may run beyond what was handed out.
    std::atomic<std::int64_t> lateFrames{0};
    std::atomic<bool> occupied{false};
    bool closed = false; // inside only
    std::array<float, 1024> discarded;
};

/// What the callback of one opened device does. First it is fed zeros; once its clock has proved
/// plausible it takes over the timeline, in step.
class DeviceFeed {
public:
    /// Whether the device knows what it has played, or estimates it.
    enum class Reports { Exact, Estimated };

    DeviceFeed(OutputTimeline& played, Reports kind) : timeline(played), reports(kind) {}
    DeviceFeed(const DeviceFeed&) = delete;
    DeviceFeed& operator=(const DeviceFeed&) = delete;

    /// The device's callback, real-time: writes @p frames frames to @p block. The device says that
    /// it had played @p playedFrames of what this feed gave it, or unknownPosition, at
    /// @p reportedNs, now or a moment ago; below 0, that as many are still to pass until its first
    /// is heard. False: the device has failed and is to ask no more.
    bool Render(float* block, std::int32_t frames, std::int64_t playedFrames,
                std::int64_t reportedNs) noexcept;

    /// Any thread: the device reports an error.
    void Fail() noexcept;

    bool HasFailed() const noexcept { return failed.load(); }

    /// Any thread: whether the device has asked for anything yet, and whether it was ever the one
    /// that plays.
    bool WasAsked() const noexcept { return wasAsked.load(); }
    bool HasPlayed() const noexcept { return hasPlayed.load(); }

private:
    friend class OutputTimeline;

    bool IsPacePlausible(std::int32_t frames, std::int64_t reportedNs) noexcept;
    bool IsTrusted(std::int64_t playedFrames, std::int64_t reportedNs) noexcept;
    bool TakeOver(std::int64_t playedFrames, std::int64_t reportedNs) noexcept;
    void Play(float* block, std::int32_t frames, std::int64_t playedFrames,
              std::int64_t reportedNs) noexcept;

    OutputTimeline& timeline;
    const Reports reports;
    std::atomic<bool> failed{false};
    std::atomic<bool> wasAsked{false};
    std::atomic<bool> hasPlayed{false};

    // The callback's thread only:
    std::int64_t handedOut = 0;   // to this device
    std::int64_t paceNs = 0;      // since when the pace is measured,
    std::int64_t paceFrames = 0;  // and how many frames had been asked for by then
    std::int64_t trialNs = 0;     // since when the position has moved as it should,
    std::int64_t trialFrames = 0; // and where it was then
    std::int64_t offset = 0;      // the timeline's frame number minus the device's
    std::int64_t silenceLeft = 0;
};

} // namespace sound
