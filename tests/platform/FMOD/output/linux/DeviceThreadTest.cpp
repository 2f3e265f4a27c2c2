// One kind of device that hangs, and the others.
#include "DeviceThread.h"

#include "Clock.h"
#include "Device.h"
#include "Devices.h"
#include "LiveOutput.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>

namespace {

// A number that other threads wait for.
class Count {
public:
    void Add(int change) {
        number += change;
        number.notify_all();
    }

    void Await(int least) const {
        for (int now = number; now < least; now = number) {
            number.wait(now);
        }
    }

    operator int() const { return number; }

private:
    std::atomic<int> number{0};
};

struct Script {
    std::string hangsIn; // the first kind's
    std::atomic<bool> hangs{true};
    std::atomic<bool> refuses{false}; // the second kind
    Count entered;                    // what hangs
    Count firstMade;
    Count firstTried;
    Count firstClosed;
    Count secondTried;
    Count secondClosed;

    void Enter(const char* operation) {
        if (hangsIn == operation) {
            entered.Add(1);
            hangs.wait(true);
        }
    }

    void GoOn() {
        hangs = false;
        hangs.notify_all();
    }
};

std::shared_ptr<Script> script; // replaced while no device thread runs

class FirstDevice final : public sound::Device {
public:
    FirstDevice() { script->firstMade.Add(1); }
    ~FirstDevice() override {
        script->Enter("close");
        script->firstClosed.Add(1);
    }

    // One that hung, and then works after all.
    bool Start() override {
        script->Enter("start");
        return script->hangsIn == "start";
    }
};

class SecondDevice final : public sound::Device {
public:
    explicit SecondDevice(sound::DeviceFeed& fed) : feed(fed) {}
    ~SecondDevice() override { script->secondClosed.Add(1); }

    bool Start() override {
        const bool starts = !script->refuses;
        if (starts) {
            std::array<float, 2> frame;
            feed.Render(frame.data(), 1, 0, sound::MonotonicNs());
        }
        script->secondTried.Add(1);
        return starts;
    }

private:
    sound::DeviceFeed& feed;
};

constexpr std::array<sound::DeviceKind, 2> kinds = {
    {{"first", sound::DeviceFeed::Reports::Estimated,
      [](sound::DeviceFeed&) -> std::unique_ptr<sound::Device> {
          script->firstTried.Add(1);
          script->Enter("make");
          return std::make_unique<FirstDevice>();
      }},
     {"second", sound::DeviceFeed::Reports::Exact,
      [](sound::DeviceFeed& feed) -> std::unique_ptr<sound::Device> {
          return std::make_unique<SecondDevice>(feed);
      }}}};

void Silence(void*, float* block, std::int32_t frames) noexcept {
    std::fill_n(block, 2 * static_cast<std::int64_t>(frames), 0.0F);
}

class HangingKindTest : public testing::TestWithParam<const char*> {
protected:
    HangingKindTest() {
        script = std::make_shared<Script>();
        script->hangsIn = GetParam();
    }

    ~HangingKindTest() override {
        script->GoOn();
        output->Stop();
        while (output->deviceThreads > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    void Start() { sound::StartDeviceThread(output, kinds); }

    const std::shared_ptr<sound::LiveOutput> output = std::make_shared<sound::LiveOutput>(
        sound::Source{nullptr, Silence, [](void*, std::int32_t) noexcept {}}, sound::MonotonicNs());
};

} // namespace

INSTANTIATE_TEST_SUITE_P(InEachCall, HangingKindTest, testing::Values("make", "start", "close"),
                         [](const auto& call) { return std::string(call.param); });

TEST_P(HangingKindTest, IsNotTriedAgainBeforeItsCallReturns) {
    script->refuses = true;
    Start();

    script->secondTried.Await(2);
    EXPECT_EQ(script->firstTried, 1);

    script->GoOn();
    script->firstTried.Await(2);
}

TEST_P(HangingKindTest, LeavesTheNextOneItsTurnForGood) {
    Start();
    script->secondTried.Await(1);
    EXPECT_EQ(script->entered, 1);

    script->GoOn();
    script->firstClosed.Await(script->firstMade);
    while (output->deviceThreads > 2) { // the device thread, and the attempt that plays
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    EXPECT_EQ(script->firstTried, 1);
    EXPECT_EQ(script->secondTried, 1);
    EXPECT_EQ(script->secondClosed, 0);
}
