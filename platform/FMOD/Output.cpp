// The live output: a device where there is one, otherwise silence in real time.
#include "Output.h"

#include "Clock.h"
#include "DeviceThread.h"
#include "LiveOutput.h"
#include "SilentOutput.h"

#include <chrono>
#include <thread>

namespace sound {

// For a device to open or to close. The caller draws frames, and drops one or two at worst.
static constexpr std::chrono::milliseconds longestWait{40};

struct Output {
    explicit Output(const Source& source)
        : live(std::make_shared<LiveOutput>(source, MonotonicNs())), silence(*live) {}

    std::shared_ptr<LiveOutput> live;
    SilentOutput silence;
};

// Polls, for neither an output callback nor a device that hangs tells anybody.
template <typename Condition>
static void WaitFor(Condition reached) {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (!reached() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

static void WaitForDevice(const LiveOutput& live) {
    WaitFor([&live] { return live.timeline.IsSounding() || live.deviceFailed; });
}

OutputHandle StartOutput(const Source& source) {
    OutputHandle output(new Output(source));
    StartDeviceThread(output->live);
    WaitForDevice(*output->live);
    return output;
}

void StopOutput::operator()(Output* output) const noexcept {
    output->live->timeline.Close();
    output->live->Stop();
    WaitFor([output] { return output->live->deviceClosed.load(); });
    delete output;
}

void AwaitDevice(Output& output) noexcept {
    WaitForDevice(*output.live);
    output.live->soundWanted = true;
}

std::int64_t HeardFrames(Output& output) noexcept {
    return output.live->timeline.HeardFrames(MonotonicNs());
}

} // namespace sound
