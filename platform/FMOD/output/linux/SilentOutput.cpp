#include "SilentOutput.h"

#include "Clock.h"
#include "LiveOutput.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <functional>

namespace sound {

// A quarter of the render-ahead of the silent output.
static constexpr std::chrono::milliseconds period{25};

// Half of a device's buffer: an error is noticed before the buffer runs empty.
static constexpr std::chrono::milliseconds longestPeriod{100};

// How long a device may neither play nor fail before the viewer is told.
static constexpr int periodsUntilNotified = 80;

// While a device plays, the only task is to notice in time that it is lost.
static std::chrono::nanoseconds Pause(const OutputTimeline& timeline) {
    const std::chrono::nanoseconds untilLost(timeline.TimeUntilLostNs(MonotonicNs()));
    return std::clamp<std::chrono::nanoseconds>(untilLost, period, longestPeriod);
}

static void Run(LiveOutput& output) {
    int silentPeriods = 0;
    bool notified = false;
    while (output.WaitFor(Pause(output.timeline), [] { return false; })) {
        const std::int64_t nowNs = MonotonicNs();
        if (output.timeline.FallSilentIfLost(nowNs)) {
            output.Wake(); // the device thread, to end that device
        }
        output.timeline.AdvanceSilence(nowNs);

        const bool silent =
            output.soundWanted && output.deviceWanted && !output.timeline.IsSounding();
        silentPeriods = silent ? silentPeriods + 1 : 0;
        const bool notify = silent && (output.deviceFailed || silentPeriods > periodsUntilNotified);
        if (notify && !notified) {
            std::fprintf(stderr, "%s: no sound device, playing silently\n",
                         program_invocation_short_name);
        }
        notified = silent && (notified || notify);
    }
}

SilentOutput::SilentOutput(LiveOutput& output) : thread(Run, std::ref(output)) {}

SilentOutput::~SilentOutput() {
    thread.join();
}

} // namespace sound
