// A sound server that hangs in the middle of a call, and who waits for it.
#include "Output.h"

#include <cubeb/cubeb.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <string>
#include <utility>

// How long this thread has asked to sleep. A sleep lasts at least as long as was asked for, so that
// the sum is bounded by the library's limits, however busy the machine is.
static thread_local std::chrono::nanoseconds slept{0};

extern "C" int RealNanosleep(const timespec* time, timespec* left) __asm__("__real_nanosleep");
extern "C" int WrappedNanosleep(const timespec* time, timespec* left) __asm__("__wrap_nanosleep");

int WrappedNanosleep(const timespec* time, timespec* left) {
    slept += std::chrono::seconds(time->tv_sec) + std::chrono::nanoseconds(time->tv_nsec);
    return RealNanosleep(time, left);
}

namespace script {

static std::string hangsIn; // set while no device thread runs
static std::atomic<bool> hangs{false};
static std::atomic<int> contexts{0};

static void Enter(const char* operation) {
    if (hangsIn == operation) {
        hangs.wait(true);
    }
}

} // namespace script

// These take the place of the cubeb library's.
extern "C" {

static int object; // the context, and the stream

int cubeb_init(cubeb** context, const char*, const char*) {
    ++script::contexts;
    script::contexts.notify_all();
    script::Enter("cubeb_init");
    *context = reinterpret_cast<cubeb*>(&object);
    return CUBEB_OK;
}

void cubeb_destroy(cubeb*) {
    script::Enter("cubeb_destroy");
    --script::contexts;
    script::contexts.notify_all();
}

int cubeb_stream_init(cubeb*, cubeb_stream** stream, const char*, cubeb_devid, cubeb_stream_params*,
                      cubeb_devid, cubeb_stream_params*, unsigned int, cubeb_data_callback,
                      cubeb_state_callback, void*) {
    script::Enter("cubeb_stream_init");
    *stream = reinterpret_cast<cubeb_stream*>(&object);
    return CUBEB_OK;
}

void cubeb_stream_destroy(cubeb_stream*) {
    script::Enter("cubeb_stream_destroy");
}

int cubeb_stream_start(cubeb_stream*) {
    script::Enter("cubeb_stream_start");
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
    for (int left = script::contexts; left > 0; left = script::contexts) {
        script::contexts.wait(left);
    }
}

INSTANTIATE_TEST_SUITE_P(EachCall, HangingDeviceTest,
                         testing::Values("cubeb_init", "cubeb_stream_init", "cubeb_stream_start",
                                         "cubeb_stream_stop", "cubeb_stream_destroy",
                                         "cubeb_destroy"),
                         [](const auto& operation) { return std::string(operation.param); });
