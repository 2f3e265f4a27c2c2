// The live output: a device if there is one, otherwise silent output in real time.
#include "Output.h"

#include "Clock.h"
#include "DeviceThread.h"
#include "Devices.h"
#include "LiveOutput.h"
#include "SilentOutput.h"

#include "Room.h"

#include <chrono>
#include <thread>

namespace sound {

// For a device to open or to close. The caller draws frames, and drops one or two at worst.
static constexpr std::chrono::milliseconds longestWait{40};

// For one that has opened to start playing, before there is anything to draw.
static constexpr std::chrono::milliseconds longestStart{300};

struct Output {
    explicit Output(const Source& source)
        : live(std::make_shared<LiveOutput>(source, MonotonicNs())), silence(*live) {}

    std::shared_ptr<LiveOutput> live;
    SilentOutput silence;
};

// Polls, because neither an output callback nor a device that hangs can notify anybody.
template <typename Condition>
static void WaitFor(std::chrono::milliseconds limit, Condition reached) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!reached() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

static void WaitForDevice(const LiveOutput& live) {
    WaitFor(longestWait, [&live] {
        return live.timeline.IsSounding() || live.deviceFailed || !live.deviceWanted;
    });
}

OutputHandle StartOutput(const Source& source) {
    OutputHandle output(new Output(source));
    LiveOutput& live = *output->live;
    const std::span<const DeviceKind> kinds = ChosenDevices();
    live.deviceWanted = !kinds.empty();
    if (live.deviceWanted) {
        live.displayFirst = MissingFrom(RoomForShow() + roomForDevice) != nullptr;
        StartDeviceThread(output->live, kinds);
    }
    WaitForDevice(live);
    return output;
}

void StopOutput::operator()(Output* output) const noexcept {
    output->live->timeline.Close();
    output->live->Stop();
    WaitFor(longestWait, [output] { return output->live->deviceThreads == 0; });
    delete output;
}

void AwaitDevice(Output& output) noexcept {
    const LiveOutput& live = *output.live;
    WaitForDevice(live);
    WaitFor(longestStart, [&live] { return live.timeline.IsSounding() || !live.deviceStarted; });
    output.live->soundWanted = true;
}

std::int64_t HeardFrames(Output& output) noexcept {
    return output.live->timeline.HeardFrames(MonotonicNs());
}

} // namespace sound
