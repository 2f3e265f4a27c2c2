#include "DeviceThread.h"

#include "Clock.h"
#include "Device.h"
#include "Devices.h"
#include "LiveOutput.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <span>
#include <thread>

#include <pthread.h>
#include <sched.h>

namespace sound {

static constexpr std::chrono::milliseconds retryPeriod{1000};
static constexpr std::chrono::milliseconds faithfulRetryPeriod{250};
static constexpr std::chrono::seconds checkPeriod{1};

// How long a device that was started may take to request frames: a stream waits for its link, a
// wireless loudspeaker for its radio.
static constexpr std::chrono::seconds linkPatience{3};

// How long, after a device is lost, only its kind is tried, and more often: a restarted server is
// soon back, but takes a moment to find its loudspeaker.
static constexpr std::chrono::seconds faithfulness{10};

// A process that exits unloads its libraries while this thread is still running: the thread gets a
// moment to return from them, and does not enter them again.
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

static std::unique_ptr<Device> Make(const DeviceKind& kind, DeviceFeed& feed) {
    const InLibrary inside;
    return kind.make(feed);
}

static bool Start(Device& device) {
    const InLibrary inside;
    return device.Start();
}

static void Close(std::unique_ptr<Device>& device) {
    const InLibrary inside;
    device.reset();
}

// The result of trying a device.
enum class Ending { Refused, Failed, Stopped };

// Waits while a device plays or may still start to. A device that never requests frames does no
// harm, the show continues without it; but if there are others to try, it is given up in time.
static Ending Watch(LiveOutput& output, const DeviceFeed& feed, bool hasRivals) {
    const auto patient = std::chrono::steady_clock::now() + linkPatience;
    bool running = true;
    while (running && !feed.HasFailed()) {
        running = output.WaitFor(checkPeriod, [&feed] { return feed.HasFailed(); });
        if (hasRivals && !feed.WasAsked() && std::chrono::steady_clock::now() > patient) {
            return running ? Ending::Refused : Ending::Stopped;
        }
    }
    return running ? Ending::Failed : Ending::Stopped;
}

// From a device's start to its end. @p played: set if it has played.
static Ending RunDevice(LiveOutput& output, const DeviceKind& kind, bool hasRivals, bool& played) {
    DeviceFeed feed(output.timeline, kind.reports);
    std::unique_ptr<Device> device = Make(kind, feed);
    Ending ending = Ending::Refused;
    if (device != nullptr && Start(*device)) {
        output.deviceFailed = false;
        output.deviceStarted = true;
        ending = Watch(output, feed, hasRivals);
        output.deviceStarted = false;
    }
    feed.Fail();
    Close(device);
    output.timeline.Forget(feed, MonotonicNs());
    played = feed.HasPlayed();
    return ending;
}

namespace {

// Which kind of device is tried next. A kind that has played is likely to be back soon: until then
// no other is tried, which might occupy the loudspeaker or report less accurate positions.
class Search {
public:
    explicit Search(std::span<const DeviceKind> all) : kinds(all) {}

    // Tries one kind after the other until one starts; the result of the last.
    Ending Round(LiveOutput& output) {
        Ending ending = Ending::Refused;
        const auto candidates = IsFaithful() ? std::span(latest, 1) : kinds;
        for (const DeviceKind& kind : candidates) {
            bool played = false;
            ending = RunDevice(output, kind, candidates.size() > 1, played);
            if (played) {
                latest = &kind;
                faithfulUntil = std::chrono::steady_clock::now() + faithfulness;
            }
            if (ending != Ending::Refused) {
                return ending;
            }
        }
        output.deviceFailed = true;
        return ending;
    }

    // From the beginning of a round to that of the next.
    std::chrono::milliseconds Period() const {
        return IsFaithful() ? faithfulRetryPeriod : retryPeriod;
    }

private:
    bool IsFaithful() const {
        return latest != nullptr && std::chrono::steady_clock::now() < faithfulUntil;
    }

    std::span<const DeviceKind> kinds;
    const DeviceKind* latest = nullptr; // that played
    std::chrono::steady_clock::time_point faithfulUntil;
};

} // namespace

// The thread of the output callback is created by this one and inherits its priority. Without
// real-time priority it competes with other busy processes.
static void AskForPriority() {
    sched_param parameters = {};
    parameters.sched_priority = sched_get_priority_min(SCHED_RR);
    pthread_setschedparam(pthread_self(), SCHED_RR, &parameters);
}

// A lost device is reopened at once: it may only have been late.
static void Run(const std::shared_ptr<LiveOutput>& output, std::span<const DeviceKind> kinds) {
    AskForPriority();
    Search search(kinds);
    bool running = true;
    while (running) {
        const auto begin = std::chrono::steady_clock::now();
        running = search.Round(*output) != Ending::Stopped &&
                  output->WaitUntil(begin + search.Period(), [] { return false; });
    }
    output->deviceClosed = true;
}

void StartDeviceThread(std::shared_ptr<LiveOutput> output, std::span<const DeviceKind> kinds) {
    [[maybe_unused]] static const int registered = std::atexit(KeepOutOfLibrary);
    std::thread(Run, std::move(output), kinds).detach();
}

} // namespace sound
