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
///
/// Its states, and who moves it from one to the next, are a table in docs/sound.md. No thread waits
/// for another one in a device's callback, and none spins.
class OutputTimeline {
public:
    struct State {
        const DeviceFeed* driver; ///< null: silence
        bool occupied;            ///< a thread renders, or changes the driver
        bool failed;              ///< the driver has
        bool closed;
    };

    /// Starts with silent output at @p nowNs.
    OutputTimeline(const Source& source, std::int64_t nowNs);
    OutputTimeline(const OutputTimeline&) = delete;
    OutputTimeline& operator=(const OutputTimeline&) = delete;

    /// Any thread, never blocks.
    State GetState() const noexcept;

    /// Any thread, never blocks: as sound::HeardFrames.
    std::int64_t HeardFrames(std::int64_t nowNs) noexcept;

    /// Any thread: whether a device plays.
    bool IsSounding() const noexcept { return GetState().driver != nullptr; }

    /// Watchdog thread, every few ms: advances the silent output, if no device plays.
    void AdvanceSilence(std::int64_t nowNs) noexcept;

    /// Watchdog thread: if the device that plays has failed, or has requested nothing for too long,
    /// silent output takes over at the frame that would be heard now; true if that happened.
    bool FallSilentIfLost(std::int64_t nowNs) noexcept;

    /// Any thread: the time in ns after which the device that plays now counts as lost unless it
    /// requests more; 0 if none plays.
    std::int64_t TimeUntilLostNs(std::int64_t nowNs) const noexcept;

    /// Before @p feed is destroyed, whose callback has ended: silent output takes over if it is the
    /// one that plays. May sleep until the watchdog thread has done that.
    void Forget(DeviceFeed& feed, std::int64_t nowNs) noexcept;

    /// When it returns, the source is no longer used and the clock is halted. May sleep until a
    /// block has been rendered.
    void Close() noexcept;

private:
    friend class DeviceFeed;

    // The state in which nobody is in it; its driver has not failed.
    static std::uintptr_t FreeOf(const DeviceFeed* driver) noexcept {
        return reinterpret_cast<std::uintptr_t>(driver);
    }

    // The transitions between the states:
    bool TryOccupy(std::uintptr_t seen) noexcept;
    void LeaveTo(const DeviceFeed* driver) noexcept;
    void MarkFailed(const DeviceFeed& feed) noexcept;

    bool IsLost(std::uintptr_t seen, std::int64_t nowNs) const noexcept;

    // While occupied, by the thread that occupies it:
    void FallSilent(DeviceFeed& feed, std::int64_t nowNs) noexcept;
    void Render(float* block, std::int32_t frames) noexcept;
    void Discard(std::int64_t frames) noexcept;

    Source source;
    PlayHead playHead;
    std::atomic<std::int64_t> handedOut{0};
    std::atomic<std::uintptr_t> state{0}; // the driver's address and, in its low bits, the flags
    // How long the driver may request nothing after all its frames must have been heard.
    std::atomic<std::int64_t> graceFrames{0};
    // How far the clock may run beyond the frames handed out.
    std::atomic<std::int64_t> lateFrames{0};
    // While occupied only:
    std::array<float, 1024> discarded;
    bool discardedSound = false; // in the latest frames discarded
};

/// The callback side of one opened device. The device is first fed zeros; once its clock has proved
/// plausible, it takes over the timeline, in sync. One that has lost the timeline has failed.
class alignas(std::uint64_t) DeviceFeed {
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
    bool Enter(std::int64_t playedFrames, std::int64_t reportedNs) noexcept;
    void TakeOver(std::int64_t playedFrames, std::int64_t reportedNs) noexcept;
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
    float gain = 1.0F; // less while it fades in
};

} // namespace sound
