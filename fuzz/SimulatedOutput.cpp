#include "SimulatedOutput.h"

#include "Expect.h"
#include "Output.h"
#include "OutputTimeline.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr std::int64_t msNs = 1'000'000;
constexpr std::int64_t bufferedFrames = 4410;
constexpr std::int32_t blockFrames = 441;
constexpr std::int32_t mostFrames = 8192;
constexpr int watchMs = 25;
constexpr std::int32_t awaitedFrames = sound::outputRateHz / 4;

// When nothing happens to a device for so long, the clock keeps the device's time, or real time.
// One that repeats positions is never quite believed: the clock draws near it little by little.
constexpr std::int64_t settlingNs = 1000 * msNs;
constexpr std::int64_t drawingNearNs = 5000 * msNs;
constexpr std::int64_t toleratedFrames = sound::outputRateHz * 30 / 1000;

struct Device {
    using Reports = sound::DeviceFeed::Reports;

    Device(sound::OutputTimeline& timeline, Reports reports, std::int64_t deviceRateHz,
           std::int64_t nowNs)
        : feed(timeline, reports), rateHz(deviceRateHz), openedNs(nowNs), cycleNs(nowNs) {}

    sound::DeviceFeed feed;
    std::int64_t rateHz;
    std::int64_t openedNs;
    std::int64_t asked = 0;
    std::int64_t misreport = 0;
    std::int64_t repeatedFrames = 0;
    int hangsForMs = 0;
    bool sounds = false; // it has been given frames of the mix

    // Of a graph:
    std::int32_t cycleFrames = 0; // 0: it is none
    std::int64_t delayFrames = 0;
    std::int64_t cycleNs; // when its next cycle begins
};

struct Moment {
    std::int64_t ns;
    std::int64_t heard;
};

std::int64_t clockNs = 0;
std::int64_t lastHeard = 0;
int msSinceWatch = 0;
bool decoderLags = false;
std::int32_t decodedFrames = 0; // that were waited for and not asked for since
std::int64_t renderedFrames = 0;
std::optional<int> interruption;  // of the next frames rendered
sound::Output* started = nullptr; // if one is
std::unique_ptr<Device> device;
std::int64_t disturbedNs = 0;
std::optional<Moment> calm;

bool IsFree(const sound::OutputTimeline::State& state) {
    return !state.occupied && (state.driver != nullptr || !state.failed);
}

bool AreSame(const sound::OutputTimeline::State& one, const sound::OutputTimeline::State& other) {
    return one.driver == other.driver && one.occupied == other.occupied &&
           one.failed == other.failed && one.closed == other.closed;
}

// What other threads may call while the timeline is occupied: the driver stays, nothing is
// rendered.
void Interrupt(sound::OutputTimeline& timeline, int who) {
    const auto before = timeline.GetState();
    EXPECT(before.occupied && !before.closed);
    timeline.AdvanceSilence(clockNs);
    EXPECT(!timeline.FallSilentIfLost(clockNs + who * msNs));
    if (who % 4 == 0) {
        device->feed.Fail();
    } else if (who % 4 == 1) {
        sound::DeviceFeed rival(timeline, sound::DeviceFeed::Reports::Exact);
        std::array<float, 128> block;
        EXPECT(rival.Render(block.data(), 64, 0, clockNs));
        EXPECT(
            std::all_of(block.begin(), block.end(), [](float sample) { return sample == 0.0F; }));
        timeline.Forget(rival, clockNs);
    }
    const auto after = timeline.GetState();
    EXPECT(after.occupied && after.driver == before.driver && !after.closed);
    EXPECT(after.failed == before.failed || (who % 4 == 0 && after.driver == &device->feed));
}

} // namespace

namespace sound {

struct Output {
    explicit Output(const Source& played)
        : source(played), timeline({this, Render, nullptr}, clockNs) {}

    static void Render(void* output, float* block, std::int32_t frames) noexcept {
        auto& [source, timeline] = *static_cast<Output*>(output);
        if (interruption && started != nullptr && device != nullptr) {
            Interrupt(timeline, *std::exchange(interruption, std::nullopt));
        }
        renderedFrames += frames;
        if (!decoderLags && decodedFrames < frames) {
            source.waitUntilReady(source.context, awaitedFrames);
            decodedFrames = awaitedFrames;
        }
        decodedFrames -= frames;
        source.render(source.context, block, frames);
    }

    Source source;
    OutputTimeline timeline;
};

} // namespace sound

static void Disturb() {
    disturbedNs = clockNs;
    calm.reset();
}

static void CloseDevice() {
    if (device != nullptr) {
        device->feed.Fail();
        started->timeline.Forget(device->feed, clockNs);
        const auto state = started->timeline.GetState();
        EXPECT(IsFree(state) && state.driver == nullptr);
        device.reset();
    }
}

// Asks for @p frames; false: nothing more is given to it.
static bool Ask(std::int32_t frames, std::int64_t played, std::int64_t reportedNs) {
    std::array<float, 2 * static_cast<std::size_t>(mostFrames)> block;
    const auto before = started->timeline.GetState();
    const std::int64_t rendered = renderedFrames;
    const bool wanted =
        device->feed.Render(block.data(), frames, played + device->misreport, reportedNs);
    device->asked += frames;
    // From the first frame of the mix on, the device gets whole blocks until it has failed.
    const auto after = started->timeline.GetState();
    const bool drives = after.driver == &device->feed;
    EXPECT(IsFree(after) && (drives || after.driver == before.driver));
    EXPECT(drives || renderedFrames == rendered);
    EXPECT(drives == device->feed.HasPlayed() || device->feed.HasFailed());
    EXPECT(!wanted || !device->sounds || renderedFrames - rendered == frames);
    device->sounds =
        device->sounds || (before.driver == &device->feed && renderedFrames > rendered);
    EXPECT(std::all_of(block.begin(), block.begin() + 2 * std::ptrdiff_t{frames},
                       [](float sample) { return sample >= -1.0F && sample <= 1.0F; }));
    return wanted;
}

static bool AskForMore() {
    const std::int64_t played = (clockNs - device->openedNs) / msNs * device->rateHz / 1000;
    const std::int64_t repeated = std::max<std::int64_t>(device->repeatedFrames, 1);
    bool wanted = true;
    while (wanted && device->asked < played + bufferedFrames) {
        wanted = Ask(blockFrames, std::min(played, device->asked) / repeated * repeated, clockNs);
    }
    return wanted;
}

static bool RunCycles() {
    bool wanted = true;
    while (wanted && device->cycleNs <= clockNs) {
        wanted = Ask(device->cycleFrames, device->asked - device->delayFrames, device->cycleNs);
        device->cycleNs +=
            device->cycleFrames * (1000 * msNs) / std::max<std::int64_t>(device->rateHz, 1);
    }
    return wanted;
}

static void RunDevice() {
    if (device == nullptr) {
        return;
    }
    if (device->hangsForMs > 0) {
        device->cycleNs = std::max(device->cycleNs, clockNs);
        if (--device->hangsForMs == 0) {
            Disturb();
        }
        return;
    }
    if (const bool wanted = device->cycleFrames > 0 ? RunCycles() : AskForMore(); !wanted) {
        CloseDevice();
        Disturb();
    }
}

static void CheckClock() {
    const bool repeats = device != nullptr && device->repeatedFrames > 0;
    if (clockNs < disturbedNs + (repeats ? drawingNearNs : settlingNs)) {
        return;
    }
    const std::int64_t heard = sound::HeardFrames(*started);
    if (!calm) {
        calm = Moment{clockNs, heard};
    }
    const std::int64_t real = sound::FramesIn(clockNs - calm->ns);
    const std::int64_t ofDevice =
        device == nullptr ? real : real * device->rateHz / sound::outputRateHz;
    const std::int64_t tolerated =
        toleratedFrames + (device == nullptr ? 0 : device->repeatedFrames + device->cycleFrames);
    EXPECT(heard - calm->heard >= std::min(real, ofDevice) - tolerated);
    EXPECT(heard - calm->heard <= std::max(real, ofDevice) + tolerated);
}

static void Watch() {
    sound::OutputTimeline& timeline = started->timeline;
    const auto before = timeline.GetState();
    const bool fell = timeline.FallSilentIfLost(clockNs);
    const auto between = timeline.GetState();
    EXPECT(IsFree(between));
    EXPECT(fell ? before.driver != nullptr && between.driver == nullptr
                : AreSame(before, between) && !between.failed);
    EXPECT(!fell || device == nullptr || device->feed.HasFailed());
    timeline.AdvanceSilence(clockNs);
    EXPECT(AreSame(between, timeline.GetState()));
    CheckClock();
}

namespace sound {

OutputHandle StartOutput(const Source& source) {
    OutputHandle output(new Output(source));
    started = output.get();
    lastHeard = 0;
    Disturb();
    return output;
}

void StopOutput::operator()(Output* output) const noexcept {
    CloseDevice();
    output->timeline.Close();
    EXPECT(output->timeline.GetState().closed && IsFree(output->timeline.GetState()));
    started = nullptr;
    delete output;
}

void AwaitDevice(Output&) noexcept {
    decodedFrames = 0; // for now something else plays
}

std::int64_t HeardFrames(Output& output) noexcept {
    const std::int64_t heard = output.timeline.HeardFrames(clockNs);
    EXPECT(heard >= lastHeard);
    lastHeard = heard;
    return heard;
}

} // namespace sound

namespace fuzz {

void ResetOutput() {
    clockNs = 1'000'000 * msNs;
    msSinceWatch = 0;
    decoderLags = false;
    interruption.reset();
}

void PassTime(int ms) {
    for (int passed = 0; passed < ms; ++passed) {
        clockNs += msNs;
        RunDevice();
        if (++msSinceWatch >= watchMs) {
            msSinceWatch = 0;
            Watch();
        }
    }
}

void Suspend(int ms) {
    clockNs += ms * msNs;
    Disturb();
}

void OpenDevice(std::int64_t rateHz) {
    CloseDevice();
    device =
        std::make_unique<Device>(started->timeline, Device::Reports::Estimated, rateHz, clockNs);
    Disturb();
}

void OpenGraph(std::int64_t rateHz, std::int32_t cycleFrames, std::int64_t delayFrames) {
    CloseDevice();
    device = std::make_unique<Device>(started->timeline, Device::Reports::Exact, rateHz, clockNs);
    device->cycleFrames = cycleFrames;
    device->delayFrames = delayFrames;
    Disturb();
}

static void ChangeDevice(const std::function<void(Device&)>& change) {
    if (device != nullptr) {
        change(*device);
        Disturb();
    }
}

void RepeatPosition(std::int64_t cycleFrames) {
    ChangeDevice([=](Device& changed) { changed.repeatedFrames = cycleFrames; });
}

void HangDevice(int ms) {
    ChangeDevice([=](Device& changed) { changed.hangsForMs = ms; });
}

void FailDevice() {
    ChangeDevice([](Device& changed) { changed.feed.Fail(); });
}

void MisreportBy(std::int64_t frames) {
    ChangeDevice([=](Device& changed) { changed.misreport = frames; });
}

void LetDecoderLag(bool lag) {
    decoderLags = lag;
}

void InterruptNextRender(int who) {
    interruption = who;
}

std::int64_t LastHeardFrames() {
    return lastHeard;
}

} // namespace fuzz
