#include "DeviceThread.h"

#include "DeviceAttempt.h"
#include "Devices.h"
#include "LiveOutput.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <span>
#include <thread>
#include <utility>
#include <vector>

#include <pthread.h>
#include <sched.h>

namespace sound {

static constexpr std::chrono::milliseconds retryPeriod{1000};
static constexpr std::chrono::milliseconds faithfulRetryPeriod{250};

// How long a device may take to open, and once it is open to request frames: a stream waits for its
// link, a wireless loudspeaker for its radio.
static constexpr std::chrono::seconds patience{3};

// How long it may take to close, and so to leave the loudspeaker to another.
static constexpr std::chrono::seconds closingPatience{1};

// How long, after a device is lost, only its kind is tried, and more often: a restarted server is
// soon back, but takes a moment to find its loudspeaker.
static constexpr std::chrono::seconds faithfulness{10};

namespace {

using Stage = DeviceAttempt::Stage;

// Which kind of device is tried next. A kind that has played is likely to be back soon: until then
// no other is tried, which might occupy the loudspeaker or report less accurate positions.
class Search {
public:
    Search(std::shared_ptr<LiveOutput> of, std::span<const DeviceKind> kinds)
        : output(std::move(of)) {
        for (const DeviceKind& kind : kinds) {
            all.push_back({kind, nullptr});
        }
    }

    // Tries one kind after the other, until one has requested frames and was lost, or the output
    // is stopped.
    void Round() {
        const auto candidates = IsFaithful() ? std::span(latest, 1) : std::span(all);
        for (Candidate& candidate : candidates) {
            const bool mayOpen = !output->displayFirst || output->soundWanted;
            if (mayOpen && Try(candidate, candidates.size() > 1)) {
                return;
            }
        }
        output->deviceFailed = true;
    }

    // From the beginning of a round to that of the next.
    std::chrono::milliseconds Period() const {
        return IsFaithful() ? faithfulRetryPeriod : retryPeriod;
    }

private:
    struct Candidate {
        const DeviceKind& kind;
        std::shared_ptr<DeviceAttempt> attempt; // the latest
    };

    bool IsFaithful() const {
        return latest != nullptr && std::chrono::steady_clock::now() < faithfulUntil;
    }

    // False: it is the next one's turn. An attempt that hangs is given up, and its kind is not
    // tried again before it is over.
    bool Try(Candidate& candidate, bool hasRivals) {
        if (candidate.attempt != nullptr && candidate.attempt->Reached() != Stage::Over) {
            return false;
        }
        candidate.attempt = DeviceAttempt::Begin(output, candidate.kind);
        if (candidate.attempt == nullptr) {
            return false;
        }
        DeviceAttempt& attempt = *candidate.attempt;
        bool running =
            output->WaitFor(patience, [&] { return attempt.Reached() != Stage::Opening; });
        if (attempt.Reached() == Stage::Open) {
            output->deviceFailed = false;
            output->deviceStarted = true;
            running = Watch(attempt, hasRivals);
            output->deviceStarted = false;
        }
        attempt.GiveUp();
        running = output->WaitFor(closingPatience, [&] {
            return attempt.Reached() == Stage::Over;
        }) && running;
        if (attempt.HasPlayed()) {
            latest = &candidate;
            faithfulUntil = std::chrono::steady_clock::now() + faithfulness;
        }
        return !running || attempt.WasAsked();
    }

    // Waits while a device plays or may still start to. One that never requests frames does no
    // harm, the show continues without it; but if there are others to try, it is given up in time.
    // False: stopped.
    bool Watch(const DeviceAttempt& attempt, bool hasRivals) {
        const auto isLost = [&] { return attempt.Reached() != Stage::Open; };
        bool running = true;
        while (running && !isLost()) {
            running = output->WaitFor(patience, isLost);
            if (hasRivals && !attempt.WasAsked()) {
                break;
            }
        }
        return running;
    }

    const std::shared_ptr<LiveOutput> output;
    std::vector<Candidate> all;
    Candidate* latest = nullptr; // that played
    std::chrono::steady_clock::time_point faithfulUntil;
};

} // namespace

// The thread of the output callback is created by an attempt's, which is created by this one: they
// inherit its priority. Without real-time priority it competes with other busy processes.
static void AskForPriority() {
    sched_param parameters = {};
    parameters.sched_priority = sched_get_priority_min(SCHED_RR);
    pthread_setschedparam(pthread_self(), SCHED_RR, &parameters);
}

// A lost device is reopened at once: it may only have been late.
static void Run(const std::shared_ptr<LiveOutput>& output, std::span<const DeviceKind> kinds) {
    AskForPriority();
    Search search(output, kinds);
    auto begin = std::chrono::steady_clock::now();
    do {
        begin = std::chrono::steady_clock::now();
        search.Round();
    } while (output->WaitUntil(begin + search.Period(), [] { return false; }));
    --output->deviceThreads;
}

void StartDeviceThread(std::shared_ptr<LiveOutput> output, std::span<const DeviceKind> kinds) {
    [[maybe_unused]] static const int registered = std::atexit(DeviceAttempt::KeepOutOfLibraries);
    std::thread thread(Run, output, kinds);
    ++output->deviceThreads;
    thread.detach();
}

} // namespace sound
