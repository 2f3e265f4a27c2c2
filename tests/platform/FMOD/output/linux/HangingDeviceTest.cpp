// A sound server that hangs in the middle of a call or fails, and who waits for it.
#include "Clock.h"
#include "Output.h"
#include "PipeWireLibrary.h"

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
#include <thread>
#include <utility>
#include <vector>

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
static std::mutex callbacks;               // a stream does not go while one of its callbacks runs
static cubeb_data_callback fill = nullptr; // of the latest stream, as the next two
static cubeb_state_callback tellState = nullptr;
static void* user = nullptr;
static std::mutex backendsMutex;
static std::vector<std::string> backends; // that were tried
static std::string opens;                 // the latest, or another that is opened in its place
static std::string opensInstead;
// Since when the latest stream plays; 0: it cannot tell.
static std::atomic<std::int64_t> startNs{0};

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
    tellState(nullptr, user, CUBEB_STATE_ERROR);
}

} // namespace script

// These take the place of the cubeb library's.
extern "C" {

static int object; // the context, and the stream

int cubeb_init(cubeb** context, const char*, const char* backend) {
    {
        const std::lock_guard<std::mutex> lock(script::backendsMutex);
        script::backends.emplace_back(backend);
    }
    script::Count(script::contextsEver, 1);
    if (script::refuses) {
        return CUBEB_ERROR;
    }
    script::Count(script::contexts, 1);
    script::Enter("cubeb_init");
    script::opens = script::opensInstead.empty() ? backend : script::opensInstead;
    *context = reinterpret_cast<cubeb*>(&object);
    return CUBEB_OK;
}

const char* cubeb_get_backend_id(cubeb*) {
    return script::opens.c_str();
}

void cubeb_destroy(cubeb*) {
    script::Enter("cubeb_destroy");
    script::Count(script::contexts, -1);
}

int cubeb_stream_init(cubeb*, cubeb_stream** stream, const char*, cubeb_devid, cubeb_stream_params*,
                      cubeb_devid, cubeb_stream_params*, unsigned int, cubeb_data_callback fill,
                      cubeb_state_callback tellState, void* user) {
    script::Enter("cubeb_stream_init");
    script::fill = fill;
    script::tellState = tellState;
    script::user = user;
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

int cubeb_stream_get_position(cubeb_stream*, std::uint64_t* frames) {
    *frames = static_cast<std::uint64_t>(sound::FramesIn(sound::MonotonicNs() - script::startNs));
    return script::startNs == 0 ? CUBEB_ERROR : CUBEB_OK;
}

} // extern "C"

// No PipeWire on this system.
const sound::PipeWireLibrary* sound::LoadPipeWire() {
    return nullptr;
}

template <int sample>
static void Render(void*, float* block, std::int32_t frames) noexcept {
    std::fill_n(block, 2 * static_cast<std::int64_t>(frames), static_cast<float>(sample));
}

// An output of frames that all hold @p sample.
template <int sample = 0>
static sound::OutputHandle StartedOutput() {
    return sound::StartOutput({nullptr, Render<sample>, [](void*, std::int32_t) noexcept {}});
}

static std::chrono::nanoseconds TakeSlept() {
    return std::exchange(slept, std::chrono::nanoseconds(0));
}

static std::vector<std::string> TakeBackends() {
    const std::lock_guard<std::mutex> lock(script::backendsMutex);
    return std::exchange(script::backends, {});
}

class HangingDeviceTest : public testing::TestWithParam<const char*> {
protected:
    HangingDeviceTest() { setenv("SKOVRA_SOUND", "pulse", 1); }
    ~HangingDeviceTest() override { unsetenv("SKOVRA_SOUND"); }
};

TEST_P(HangingDeviceTest, IsLeftToItselfAfter40Ms) {
    using namespace std::chrono_literals;
    constexpr std::chrono::milliseconds limit{40};
    constexpr std::chrono::milliseconds whileToBegin{300}; // this one never does
    script::streamsEver = 0;
    script::hangsIn = GetParam();
    script::hangs = true;
    slept = {};

    sound::OutputHandle output = StartedOutput();
    const auto inStart = TakeSlept();
    script::contexts.wait(0);
    sound::AwaitDevice(*output);
    const auto inAwait = TakeSlept();
    output.reset();
    const auto inStop = TakeSlept();

    EXPECT_LE(inStart, limit);
    EXPECT_LE(inAwait, limit + (script::streamsEver > 0 ? whileToBegin : 0ms));
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

static void AwaitRounds(int devices) {
    for (int tried = script::contextsEver; tried < devices; tried = script::contextsEver) {
        script::contextsEver.wait(tried);
    }
}

TEST(RefusedDevice, IsFollowedByTheNextKind) {
    setenv("JACK_DEFAULT_SERVER", "nonexistent", 1);
    TakeBackends();
    script::contextsEver = 0;
    script::refuses = true;

    sound::OutputHandle output = StartedOutput();
    AwaitRounds(4);
    output.reset();
    script::refuses = false;

    std::vector<std::string> tried = TakeBackends();
    tried.resize(4);
    EXPECT_EQ(tried, std::vector<std::string>({"pulse", "alsa", "pulse", "alsa"}));
}

// As cubeb does where it cannot open the one asked for.
TEST(DeviceOfAnotherKind, IsRefused) {
    TakeBackends();
    setenv("JACK_DEFAULT_SERVER", "nonexistent", 1);
    script::contextsEver = 0;
    script::streamsEver = 0;
    script::opensInstead = "sndio";

    sound::OutputHandle output = StartedOutput();
    AwaitRounds(4);
    output.reset();
    script::WaitFor(script::contexts, 0);
    script::opensInstead.clear();

    std::vector<std::string> tried = TakeBackends();
    tried.resize(4);
    EXPECT_EQ(tried, std::vector<std::string>({"pulse", "alsa", "pulse", "alsa"}));
    EXPECT_EQ(script::streamsEver, 0);
}

// The latest stream asks as it plays, until it is given ones.
static void AskUntilMusicComes() {
    std::vector<float> block(std::size_t{2} * 441);
    std::int64_t asked = 0;
    while (block[0] == 0.0F) {
        if (asked < sound::FramesIn(sound::MonotonicNs() - script::startNs) + 4410) {
            script::fill(nullptr, script::user, nullptr, block.data(), 441);
            asked += 441;
        }
    }
}

// Or else the beginning of the music would not be heard. This one begins later than any is waited
// for to open.
TEST(OpenedDevice, IsAwaitedUntilItBegins) {
    constexpr std::chrono::milliseconds silentAtFirst{60};
    setenv("SKOVRA_SOUND", "pulse", 1);
    script::streamsEver = 0;
    sound::OutputHandle output = StartedOutput<1>();
    script::WaitFor(script::streamsEver, 1);

    const auto begin = std::chrono::steady_clock::now();
    std::thread device([silentAtFirst] {
        std::this_thread::sleep_for(silentAtFirst);
        script::startNs = sound::MonotonicNs();
        AskUntilMusicComes();
    });
    sound::AwaitDevice(*output);
    const auto waited = std::chrono::steady_clock::now() - begin;
    device.join();
    output.reset();
    script::startNs = 0;
    unsetenv("SKOVRA_SOUND");

    EXPECT_GE(waited, silentAtFirst);
}

// A device that is lost is likely to be back. Another kind might keep it from coming back, or tell
// the time less well. It is tried more often than once a second: ten seconds are enough for all.
TEST(LostDevice, IsTriedAgainBeforeAnyOtherKind) {
    constexpr int rounds = 12;
    setenv("JACK_DEFAULT_SERVER", "nonexistent", 1);
    script::streamsEver = 0;
    script::startNs = sound::MonotonicNs();
    sound::OutputHandle output = StartedOutput<1>();
    script::WaitFor(script::streamsEver, 1);
    AskUntilMusicComes();
    TakeBackends();
    script::contextsEver = 0;
    script::refuses = true;

    script::ReportError();
    AwaitRounds(rounds);
    output.reset();
    script::refuses = false;
    script::startNs = 0;

    std::vector<std::string> tried = TakeBackends();
    tried.resize(rounds);
    EXPECT_EQ(tried, std::vector<std::string>(rounds, "pulse"));
}

TEST(NoDevice, IsTriedIfNoneIsWanted) {
    setenv("SKOVRA_SOUND", "none", 1);
    script::contextsEver = 0;
    slept = {};
    testing::internal::CaptureStderr();

    sound::OutputHandle output = StartedOutput();
    sound::AwaitDevice(*output);
    const auto waited = TakeSlept();
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    output.reset();
    unsetenv("SKOVRA_SOUND");

    EXPECT_EQ(script::contextsEver, 0);
    EXPECT_LT(waited, std::chrono::milliseconds(40)); // there is nothing to wait for
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
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
    setenv("SKOVRA_SOUND", "pulse", 1);
    script::refuses = true;
    outputLeftRunning = StartedOutput().release();
    std::exit(7);
}

TEST(ExitingProcess, TriesNoDeviceAnyMore) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(EndWhileADeviceIsTriedAgain(), testing::ExitedWithCode(7), "^tried 1 times\n$");
}
