// A sound server that hangs in the middle of a call or fails, and who waits for it.
#include "Output.h"

#include <cubeb/cubeb.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string>
#include <utility>

// How long this thread has asked to sleep. A sleep lasts at least as long as was asked for, so that
// the sum is bounded by the library's limits, however busy the machine is.
static thread_local std::chrono::nanoseconds slept{0};

extern "C" int RealNanosleep(const timespec* time, timespec* left) __asm__("__real_nanosleep");
extern "C" int WrappedNanosleep(const timespec* time, timespec* left) __asm__("__wrap_nanosleep");

// Set when a thread has asked to sleep for hours: it does not mean to come back.
static std::atomic<bool> sleepsForGood{false};

int WrappedNanosleep(const timespec* time, timespec* left) {
    if (time->tv_sec >= 3600) {
        sleepsForGood = true;
        sleepsForGood.notify_all();
    }
    slept += std::chrono::seconds(time->tv_sec) + std::chrono::nanoseconds(time->tv_nsec);
    return RealNanosleep(time, left);
}

namespace script {

static std::string hangsIn; // set while no device thread runs
static std::atomic<bool> hangs{false};
static std::atomic<bool> entered{false}; // what hangs
static std::atomic<bool> refuses{false};
static std::atomic<int> contexts{0};
static std::atomic<int> contextsEver{0};
static std::atomic<int> streamsEver{0};
static std::mutex callbacks; // a stream does not go while one of its callbacks runs
static cubeb_state_callback tellState = nullptr; // of the latest stream
static void* stateUser = nullptr;

static void Enter(const char* operation) {
    if (hangsIn == operation) {
        entered = true;
        entered.notify_all();
        hangs.wait(true);
    }
}

static void Count(std::atomic<int>& number, int change) {
    number += change;
    number.notify_all();
}

static void WaitFor(const std::atomic<int>& number, int wanted) {
    for (int now = number; now != wanted; now = number) {
        number.wait(now);
    }
}

static void ReportError() {
    const std::lock_guard<std::mutex> lock(callbacks);
    tellState(nullptr, stateUser, CUBEB_STATE_ERROR);
}

} // namespace script

// These take the place of the cubeb library's.
extern "C" {

static int object; // the context, and the stream

int cubeb_init(cubeb** context, const char*, const char*) {
    ++script::contextsEver;
    if (script::refuses) {
        return CUBEB_ERROR;
    }
    script::Count(script::contexts, 1);
    script::Enter("cubeb_init");
    *context = reinterpret_cast<cubeb*>(&object);
    return CUBEB_OK;
}

void cubeb_destroy(cubeb*) {
    script::Enter("cubeb_destroy");
    script::Count(script::contexts, -1);
}

int cubeb_stream_init(cubeb*, cubeb_stream** stream, const char*, cubeb_devid, cubeb_stream_params*,
                      cubeb_devid, cubeb_stream_params*, unsigned int, cubeb_data_callback,
                      cubeb_state_callback tellState, void* user) {
    script::Enter("cubeb_stream_init");
    script::tellState = tellState;
    script::stateUser = user;
    *stream = reinterpret_cast<cubeb_stream*>(&object);
    return CUBEB_OK;
}

void cubeb_stream_destroy(cubeb_stream*) {
    script::Enter("cubeb_stream_destroy");
    const std::lock_guard<std::mutex> lock(script::callbacks);
}

int cubeb_stream_start(cubeb_stream*) {
    script::Enter("cubeb_stream_start");
    script::Count(script::streamsEver, 1);
    return CUBEB_OK;
}

int cubeb_stream_stop(cubeb_stream*) {
    script::Enter("cubeb_stream_stop");
    return CUBEB_OK;
}

int cubeb_stream_get_position(cubeb_stream*, std::uint64_t*) {
    return CUBEB_ERROR;
}

} // extern "C"

static void RenderNothing(void*, float* block, std::int32_t frames) noexcept {
    std::fill_n(block, 2 * static_cast<std::int64_t>(frames), 0.0F);
}

static void WaitForNothing(void*, std::int32_t) noexcept {}

static std::chrono::nanoseconds TakeSlept() {
    return std::exchange(slept, std::chrono::nanoseconds(0));
}

class HangingDeviceTest : public testing::TestWithParam<const char*> {};

TEST_P(HangingDeviceTest, IsLeftToItselfAfter40Ms) {
    constexpr std::chrono::milliseconds limit{40};
    script::hangsIn = GetParam();
    script::hangs = true;
    slept = {};

    sound::OutputHandle output = sound::StartOutput({nullptr, RenderNothing, WaitForNothing});
    const auto inStart = TakeSlept();
    script::contexts.wait(0);
    sound::AwaitDevice(*output);
    const auto inAwait = TakeSlept();
    output.reset();
    const auto inStop = TakeSlept();

    EXPECT_LE(inStart, limit);
    EXPECT_LE(inAwait, limit);
    EXPECT_LE(inStop, limit);
    EXPECT_GT(inStart + inAwait + inStop, std::chrono::nanoseconds(0));

    script::hangs = false;
    script::hangs.notify_all();
    script::WaitFor(script::contexts, 0);
}

INSTANTIATE_TEST_SUITE_P(EachCall, HangingDeviceTest,
                         testing::Values("cubeb_init", "cubeb_stream_init", "cubeb_stream_start",
                                         "cubeb_stream_stop", "cubeb_stream_destroy",
                                         "cubeb_destroy"),
                         [](const auto& operation) { return std::string(operation.param); });

static sound::OutputHandle StartedOutput() {
    return sound::StartOutput({nullptr, RenderNothing, WaitForNothing});
}

// Seen from here, what runs on when the process ends is no leak.
sound::Output* outputLeftRunning = nullptr;

TEST(FailingDevice, IsClosedAndOpenedAgain) {
    script::streamsEver = 0;
    sound::OutputHandle output = StartedOutput();
    script::WaitFor(script::streamsEver, 1);

    script::ReportError();

    script::WaitFor(script::streamsEver, 2);
    EXPECT_EQ(script::contexts, 1);
    output.reset();
    script::WaitFor(script::contexts, 0);
}

// These processes end in mid-show: no destructor runs, and exit does not join.

[[noreturn]] static void EndWhileADeviceHangs() {
    script::hangsIn = "cubeb_init";
    script::hangs = true;
    outputLeftRunning = StartedOutput().release();
    script::entered.wait(false);
    std::exit(7);
}

TEST(ExitingProcess, LeavesADeviceThatHangsBehind) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(EndWhileADeviceHangs(), testing::ExitedWithCode(7), "");
}

static void SayHowOftenADeviceWasTried() {
    sleepsForGood.wait(false);
    std::fprintf(stderr, "tried %d times\n", script::contextsEver.load());
}

[[noreturn]] static void EndWhileADeviceIsTriedAgain() {
    std::atexit(SayHowOftenADeviceWasTried); // last, for it is the first
    script::refuses = true;
    outputLeftRunning = StartedOutput().release();
    std::exit(7);
}

TEST(ExitingProcess, TriesNoDeviceAnyMore) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(EndWhileADeviceIsTriedAgain(), testing::ExitedWithCode(7), "^tried 1 times\n$");
}
