// Keeps a device open behind the timeline, on a thread that may hang in it.
#include "DeviceThread.h"

#include "Clock.h"
#include "CubebOutput.h"
#include "LiveOutput.h"

#include <atomic>
#include <cstdlib>
#include <optional>
#include <thread>

#include <pthread.h>
#include <sched.h>

namespace sound {

static constexpr std::chrono::seconds retryPeriod{1};
static constexpr std::chrono::seconds checkPeriod{1};

// A process that exits takes its libraries down while this thread goes on: it is given a moment to
// come out of them, and does not enter them again.
static constexpr std::chrono::milliseconds exitPatience{50};
static std::atomic<bool> processExits{false};
static std::atomic<int> threadsInLibrary{0};

static void KeepOutOfLibrary() {
    processExits = true;
    const auto end = std::chrono::steady_clock::now() + exitPatience;
    while (threadsInLibrary > 0 && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

namespace {

struct InLibrary {
    InLibrary() {
        ++threadsInLibrary;
        if (processExits) {
            --threadsInLibrary;
            for (;;) {
                std::this_thread::sleep_for(std::chrono::hours(1));
            }
        }
    }
    InLibrary(const InLibrary&) = delete;
    InLibrary& operator=(const InLibrary&) = delete;
    ~InLibrary() { --threadsInLibrary; }
};

} // namespace

static bool Start(CubebOutput& device) {
    const InLibrary inside;
    return device.Start();
}

static void Close(std::optional<CubebOutput>& device) {
    const InLibrary inside;
    device.reset();
}

// From a start to the device's end; false when asked to stop. A device that was started and never
// takes over is no harm: the show goes on without it.
static bool RunDevice(LiveOutput& output) {
    bool running = true;
    DeviceFeed feed(output.timeline);
    std::optional<CubebOutput> device(std::in_place, feed);
    const bool started = Start(*device);
    output.deviceFailed = !started;
    while (started && running && !feed.HasFailed()) {
        running = output.WaitFor(checkPeriod, [&feed] { return feed.HasFailed(); });
    }
    feed.Fail();
    Close(device);
    output.timeline.Forget(feed, MonotonicNs());
    return running;
}

// The thread of the output callback is made by this one and inherits what it has. Where that may
// not be asked for, it waits its turn beside other busy processes.
static void AskForPriority() {
    sched_param parameters = {};
    parameters.sched_priority = sched_get_priority_min(SCHED_RR);
    pthread_setschedparam(pthread_self(), SCHED_RR, &parameters);
}

// A device that was lost is opened again at once: it may only have been late.
static void Run(const std::shared_ptr<LiveOutput>& output) {
    AskForPriority();
    bool running = true;
    while (running) {
        const auto next = std::chrono::steady_clock::now() + retryPeriod;
        running = RunDevice(*output) && output->WaitUntil(next, [] { return false; });
    }
    output->deviceClosed = true;
}

void StartDeviceThread(std::shared_ptr<LiveOutput> output) {
    [[maybe_unused]] static const int registered = std::atexit(KeepOutOfLibrary);
    std::thread(Run, std::move(output)).detach();
}

} // namespace sound
