// The library's own devices with a source that does what none may, so that the watch on callbacks
// has something to find: planted-callback [system], with the device that SKOVRA_SOUND names.
#include "Clock.h"
#include "Device.h"
#include "Devices.h"
#include "OutputTimeline.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

static std::mutex mutex;
static std::atomic<int> rounds{0};

static void AllocateLockAndWait() {
    static void* volatile block; // volatile, or nothing would be allocated
    block = std::malloc(1);
    std::free(block);
    const std::lock_guard<std::mutex> lock(mutex);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

// A system call that no function makes.
static void CallSystem() {
#if defined(__x86_64__)
    long answer = SYS_getppid;
    __asm__ volatile("syscall" : "+a"(answer) : : "rcx", "r11", "memory");
#endif
}

static void Render(void* callsSystem, float* block, std::int32_t frames) noexcept {
    if (callsSystem != nullptr) {
        CallSystem();
    } else {
        AllocateLockAndWait();
    }
    std::fill_n(block, 2 * static_cast<std::int64_t>(frames), 0.0F);
    ++rounds;
}

static void WaitForNothing(void*, std::int32_t) noexcept {}

template <typename Condition>
static void WaitFor(Condition reached) {
    while (!reached()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// Until the device has asked for enough; false: it failed before, for it may be late.
static bool Play(sound::OutputTimeline& timeline, const sound::DeviceKind& kind) {
    sound::DeviceFeed feed(timeline, kind.reports);
    const std::unique_ptr<sound::Device> device = kind.make(feed);
    if (device == nullptr || !device->Start()) {
        std::exit(1);
    }
    WaitFor([&feed] { return feed.HasPlayed() || feed.HasFailed(); });
    const int before = rounds; // to begin with, and to take over
    WaitFor([&feed, before] { return rounds >= before + 12 || feed.HasFailed(); });
    return !feed.HasFailed();
}

int main(int argc, char** argv) {
    sound::OutputTimeline timeline(
        {argc > 1 ? static_cast<void*>(argv) : nullptr, Render, WaitForNothing},
        sound::MonotonicNs());
    while (!Play(timeline, sound::ChosenDevices().front())) {
    }
    return 0;
}
