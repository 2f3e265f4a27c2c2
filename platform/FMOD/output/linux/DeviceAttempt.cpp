#include "DeviceAttempt.h"

#include "Clock.h"
#include "Device.h"
#include "Devices.h"
#include "LiveOutput.h"

#include "Room.h"

#include <chrono>
#include <exception>
#include <new>
#include <thread>
#include <utility>

namespace sound {

// The output callback cannot wake anybody when its device fails.
static constexpr std::chrono::seconds checkPeriod{1};

static constexpr std::chrono::milliseconds exitPatience{50};
static std::atomic<bool> processExits{false};
static std::atomic<int> threadsInLibrary{0};

void DeviceAttempt::KeepOutOfLibraries() noexcept {
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

std::shared_ptr<DeviceAttempt> DeviceAttempt::Begin(const std::shared_ptr<LiveOutput>& output,
                                                    const DeviceKind& kind) noexcept {
    ++output->deviceThreads;
    try {
        const auto attempt = std::make_shared<DeviceAttempt>(output, kind);
        std::thread([attempt] { attempt->Run(); }).detach();
        return attempt;
    } catch (const std::exception&) { // std::bad_alloc, std::system_error
        --output->deviceThreads;
        return nullptr;
    }
}

DeviceAttempt::DeviceAttempt(std::shared_ptr<LiveOutput> of, const DeviceKind& tried)
    : output(std::move(of)), kind(tried), feed(output->timeline, kind.reports) {}

void DeviceAttempt::GiveUp() noexcept {
    feed.Fail();
    output->Wake();
}

void DeviceAttempt::Run() noexcept {
    std::unique_ptr<Device> device;
    if (Open(device)) {
        Reach(Stage::Open);
        while (output->WaitFor(checkPeriod, [this] { return feed.HasFailed(); }) &&
               !feed.HasFailed()) {
        }
    }
    feed.Fail();
    Reach(Stage::Closing);
    {
        const InLibrary inside;
        device.reset();
    }
    output->timeline.Forget(feed, MonotonicNs());
    Reach(Stage::Over);
    --output->deviceThreads;
}

bool DeviceAttempt::Open(std::unique_ptr<Device>& device) {
    const InLibrary inside;
    try {
        device = kind.make(feed);
        return device != nullptr && !feed.HasFailed() && MissingFrom(roomForDevice) == nullptr &&
               device->Start();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void DeviceAttempt::Reach(Stage reached) noexcept {
    stage = reached;
    output->Wake();
}

} // namespace sound
