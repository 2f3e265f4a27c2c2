// What the library does to the process it is in: in its callback, to its memory, and to the kernel.
#include "ChildProcess.h"
#include "Clock.h"
#include "Device.h"
#include "Devices.h"
#include "Mp3Files.h"
#include "OutputTimeline.h"
#include "PrivateServer.h"
#include "Sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <sys/syscall.h>
#include <sys/wait.h>

namespace {

class ProcessTest : public testing::Test {
protected:
    ProcessTest() {
        HideSoundSystems();
        files::EncodeMp3(music, sweep::Frames(std::size_t{4} * 44100), 44100);
    }

    // Runs a program from beside this one; what waitpid says of it.
    static int Run(std::vector<std::string> command) {
        command[0] = PROGRAMS "/" + command[0];
        return ChildProcess::Run(command);
    }

    // Runs a program under the watch on callbacks: what it reports, by name.
    std::map<std::string, int> RunWatched(const std::vector<std::string>& command) {
        const std::string report = folder.Path("report");
        setenv("CALLBACK_WATCH", report.c_str(), 1);
        setenv("LD_PRELOAD", PROGRAMS "/libcallback-watch.so", 1);
        const int status = Run(command);
        unsetenv("LD_PRELOAD");
        EXPECT_EQ(status, 0);

        std::map<std::string, int> counts;
        std::ifstream file(report);
        for (std::string line; std::getline(file, line);) {
            const std::size_t last = line.rfind(' ');
            counts[line.substr(0, last)] = std::atoi(line.c_str() + last);
        }
        return counts;
    }

    files::Folder folder;
    const std::string music = folder.Path("sweep.mp3");
};

class ServerProcessTest : public ProcessTest, public testing::WithParamInterface<ServerKind> {
protected:
    void SetUp() override {
        ASSERT_TRUE(server->IsRunning());
        server->BeginRecording();
        setenv("SKOVRA_SOUND", GetParam().device, 1);
    }

    const std::string callbacks =
        GetParam().device == pipeWire.device ? "pipewire callbacks" : "cubeb callbacks";
    const std::unique_ptr<PrivateServer> server = GetParam().run();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(EachServer, ServerProcessTest, EachServer(), NameOf);

TEST_P(ServerProcessTest, CallbackNeitherAllocatesNorLocksNorWaitsNorCallsTheSystem) {
    auto counts = RunWatched({"music-player", music, "3000"});

    EXPECT_GT(counts[callbacks], 30);
    counts.erase("cubeb callbacks");
    counts.erase("pipewire callbacks");
    EXPECT_EQ(testing::PrintToString(counts), "{}");
}

TEST_P(ServerProcessTest, CallbackThatAllocatesLocksOrWaitsIsCaught) {
    auto counts = RunWatched({"planted-callback"});

    EXPECT_GE(counts[callbacks], 10);
    for (const char* name : {"malloc", "free", "pthread_mutex_lock", "nanosleep"}) {
        EXPECT_GE(counts[name], 10) << name;
    }
}

#if defined(__x86_64__)
TEST_P(ServerProcessTest, CallbackThatCallsTheSystemItselfIsCaught) {
    auto counts = RunWatched({"planted-callback", "system"});

    EXPECT_GE(counts["system call " + std::to_string(SYS_getppid)], 10);
}
#endif

TEST_P(ServerProcessTest, FrameMakesNoSystemCallButForTheClock) {
    EXPECT_EQ(Run({"music-player", music, "3000", "sealed"}), 0);

    const std::vector<float> recorded = server->EndRecording();
    EXPECT_GT(*std::max_element(recorded.begin(), recorded.end()), 0.4F) << "not heard";
}

TEST_F(ProcessTest, FrameThatMakesAnotherSystemCallIsCaught) {
    const int status = Run({"music-player", music, "1000", "planted"});

    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGSYS);
}

static long ResidentKilobytes() {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("VmRSS:", 0) == 0) {
            return std::atol(line.c_str() + 6);
        }
    }
    return -1;
}

static void NoFrames(void*, float*, std::int32_t) noexcept {}
static void NoWait(void*, std::int32_t) noexcept {}

static bool OpensDevice() {
    sound::OutputTimeline timeline({nullptr, NoFrames, NoWait}, sound::MonotonicNs());
    const sound::DeviceKind& kind = sound::ChosenDevices().front();
    sound::DeviceFeed feed(timeline, kind.reports);
    const std::unique_ptr<sound::Device> device = kind.make(feed);
    return device != nullptr && device->Start();
}

static void ExpectNoMoreMemory(bool opens) {
    EXPECT_EQ(OpensDevice(), opens);
    const long onceKilobytes = ResidentKilobytes();

    for (int i = 0; i < 30; ++i) {
        EXPECT_EQ(OpensDevice(), opens);
    }

    const long grownKilobytes = ResidentKilobytes() - onceKilobytes;
    testing::Test::RecordProperty("residentKilobytes", std::to_string(onceKilobytes));
    testing::Test::RecordProperty("grownKilobytes", std::to_string(grownKilobytes));
    EXPECT_LT(grownKilobytes, 1000);
}

TEST_P(ServerProcessTest, TakesNoMoreMemoryTheMoreOftenItOpensADevice) {
    ExpectNoMoreMemory(true);
}

TEST_P(ServerProcessTest, TakesNoMoreMemoryTheMoreOftenItTriesToOpenOne) {
    server->Kill();
    ExpectNoMoreMemory(false);
}
