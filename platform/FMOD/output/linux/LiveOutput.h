// The state that the live output's threads share.
#pragma once

#include "OutputTimeline.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace sound {

/// Shared ownership, so that a thread that hangs in a sound server still has it.
struct LiveOutput {
    LiveOutput(const Source& source, std::int64_t nowNs) : timeline(source, nowNs) {}

    /// Waits until Stop, @p wanted() or @p end; false: stopped.
    template <typename Condition>
    bool WaitUntil(std::chrono::steady_clock::time_point end, Condition wanted) {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait_until(lock, end, [&] { return stopped || wanted(); });
        return !stopped;
    }

    template <typename Condition>
    bool WaitFor(std::chrono::nanoseconds limit, Condition wanted) {
        return WaitUntil(std::chrono::steady_clock::now() + limit, wanted);
    }

    void Wake() {
        const std::lock_guard<std::mutex> lock(mutex);
        changed.notify_all();
    }

    void Stop() {
        const std::lock_guard<std::mutex> lock(mutex);
        stopped = true;
        changed.notify_all();
    }

    OutputTimeline timeline;
    std::atomic<bool> deviceFailed{false};  ///< the latest attempt to open one failed
    std::atomic<bool> deviceStarted{false}; ///< one is open, and may be about to play
    std::atomic<bool> soundWanted{false};   ///< something has been or is about to be played
    std::atomic<bool> deviceWanted{true};   ///< false: SKOVRA_SOUND asks for silence
    std::atomic<bool> displayFirst{false};  ///< there may be too little room for it and a device
    std::atomic<int> deviceThreads{0};      ///< that have not ended: the device thread, attempts

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool stopped = false; // under the mutex
};

} // namespace sound
