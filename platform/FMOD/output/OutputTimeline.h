// One sequence of frames across devices, and across silent output where there is none.
#pragma once

#include "Output.h"
#include "PlayHead.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <limits>

namespace sound {

class DeviceFeed;

/// The position that a device reports if it does not know its own.
inline constexpr std::int64_t unknownPosition = std::numeric_limits<std::int64_t>::min();

/// Requests frames from the source and keeps the clock continuous across changes between devices
/// and silent output. Has no thread and no clock: callers pass the time (CLOCK_MONOTONIC).
class OutputTimeline {
public:
    /// Starts with silent output at @p nowNs.
    OutputTimeline(const Source& source, std::int64_t nowNs);
    OutputTimeline(const OutputTimeline&) = delete;
    OutputTimeline& operator=(const OutputTimeline&) = delete;

    /// Any thread, never blocks: as sound::HeardFrames.
    std::int64_t HeardFrames(std::int64_t nowNs) noexcept;

    /// Any thread: whether a device plays.
    bool IsSounding() const noexcept { return driver.load() != nullptr; }

    /// Watchdog thread, every few ms: advances the silent output, if no device plays.
    void AdvanceSilence(std::int64_t nowNs) noexcept;

    /// Watchdog thread: if the device that plays has failed, or has requested nothing for too long,
    /// silent output takes over at the frame heard now; true if that happened.
    bool FallSilentIfLost(std::int64_t nowNs) noexcept;

    /// Any thread: the time in ns after which the device that plays now counts as lost unless it
    /// requests more; 0 if none plays.
    std::int64_t TimeUntilLostNs(std::int64_t nowNs) const noexcept;

    /// Before @p feed is destroyed: silent output takes over if it is the one that plays.
    void Forget(const DeviceFeed& feed, std::int64_t nowNs) noexcept;

    /// When it returns, the source is no longer used and the clock is halted.
    void Close() noexcept;

private:
    friend class DeviceFeed;

    /// A spin lock for rendering and changing the driver; a device's callback only tries it.
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
    // How long the driver may request nothing after all its frames must have been heard.
    std::atomic<std::int64_t> graceFrames{0};
    // How far the clock may run beyond the frames handed out.
    std::atomic<std::int64_t> lateFrames{0};
    std::atomic<bool> occupied{false};
    bool closed = false; // inside only
    std::array<float, 1024> discarded;
};

/// The callback side of one opened device. The device is first fed zeros; once its clock has proved
/// plausible, it takes over the timeline, in sync.
class DeviceFeed {
public:
    /// Whether the positions that the device reports are exact or estimated.
    enum class Reports { Exact, Estimated };

    DeviceFeed(OutputTimeline& played, Reports kind) : timeline(played), reports(kind) {}
    DeviceFeed(const DeviceFeed&) = delete;
    DeviceFeed& operator=(const DeviceFeed&) = delete;

    /// The device's callback, real-time: writes @p frames frames to @p block. At @p reportedNs, now
    /// or a moment ago, the device had played @p playedFrames of the frames from this feed, or
    /// unknownPosition; a negative number is the latency left before its first frame is heard.
    /// False: the device has failed and must not call again.
    bool Render(float* block, std::int32_t frames, std::int64_t playedFrames,
                std::int64_t reportedNs) noexcept;

    /// Any thread: the device reports an error.
    void Fail() noexcept;

    bool HasFailed() const noexcept { return failed.load(); }

    /// Any thread: whether the device has requested any frames yet, and whether it ever took over
    /// the timeline.
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
    std::int64_t paceFrames = 0;  // and how many frames had been requested by then
    std::int64_t trialNs = 0;     // since when the position has advanced in real time,
    std::int64_t trialFrames = 0; // and where it was then
    std::int64_t offset = 0;      // the timeline's frame number minus the device's
    std::int64_t silenceLeft = 0;
};

} // namespace sound
