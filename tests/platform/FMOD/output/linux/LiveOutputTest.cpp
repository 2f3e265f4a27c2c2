// The whole library as the show has it: on a real server, and without any.
#include "LiveFixture.h"
#include "PrivatePipeWire.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace {

class LiveOutputTest : public LiveFixture {};

} // namespace

TEST_F(LiveOutputTest, PlaysSilentlyToTheEndWithoutAnySoundSystem) {
    testing::internal::CaptureStderr();

    OpenAndPlay(2.0);
    const Observation observed = Watch(10'000);
    Release();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
    EXPECT_EQ(observed.lastPosition, 2000U);
    ExpectRealTime("silent", observed);
    EXPECT_NEAR(observed.strongest, 0.45F, 0.06F); // the show's pictures move all the same
}

TEST_F(LiveOutputTest, LeavesADeviceThatTakesAnyAmount) {
    const std::string configuration = folder.Path("asound.conf");
    std::ofstream(configuration) << "pcm.!default { type null }\nctl.!default { type null }\n";
    setenv("ALSA_CONFIG_PATH", configuration.c_str(), 1);
    testing::internal::CaptureStderr();

    // The viewer is told after two seconds, or a few more on a busy machine.
    OpenAndPlay(10.0);
    const Observation observed = Watch(20'000);
    Release();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
    EXPECT_EQ(observed.lastPosition, 10'000U);
    ExpectRealTime("null", observed);
}

TEST_F(LiveOutputTest, EndsWithTheProcessWhileItPlays) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(
        {
            OpenAndPlay(1.0);
            Watch(100);
            std::filesystem::remove_all(folder.Path("")); // no destructor will
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

namespace {

class LiveServerTest : public LiveServerFixture {};

} // namespace

INSTANTIATE_TEST_SUITE_P(EachServer, LiveServerTest, EachServer(), NameOf);

TEST_P(LiveServerTest, IsHeardInStep) {
    OpenAndPlay(4.0);
    const Observation observed = Watch(10'000, server.get());
    Release();

    EXPECT_EQ(observed.lastPosition, 4000U);
    ExpectRealTime("heard", observed);
    const std::vector<float> recorded = ExpectInStep("heard", *server, 500, 3900);
    EXPECT_NEAR(*std::max_element(recorded.begin(), recorded.end()), 0.5F, 0.04F);
}

TEST_P(LiveServerTest, IsHeardFromTheFirstFrameOnIfPlayedOnceTheDeviceIsOpen) {
    Open(1.0);
    server->AwaitStream();
    Play();
    Watch(10'000);
    Release();

    ExpectWholeBeginning(server->EndRecording());
}

TEST_P(LiveServerTest, IsHeardFromTheFirstFrameOnIfPlayedWhileTheDevicePlays) {
    OpenAndPlay(1.0);
    Watch(10'000);
    server->BeginRecording();
    Play();
    Watch(10'000);
    Release();

    ExpectWholeBeginning(server->EndRecording());
}

namespace {

/// What of PipeWire is there, beside PulseAudio.
enum class Session { Whole, WithoutSinks, WithoutManager };

struct Choice {
    const char* name;
    Session session;
    const char* wanted; ///< by SKOVRA_SOUND
    bool onPipeWire;    ///< where the music is heard then
    bool onPulseAudio;
};

std::ostream& operator<<(std::ostream& stream, const Choice& choice) {
    return stream << choice.name;
}

class LiveChoiceTest : public LiveFixture, public testing::WithParamInterface<Choice> {
protected:
    static bool IsSound(const std::vector<float>& recorded) {
        return *std::max_element(recorded.begin(), recorded.end()) > 0.4F;
    }

    const std::unique_ptr<PrivateServer> pulse = pulseAudio.run();
    PrivatePipeWire pipe;
};

} // namespace

TEST_P(LiveChoiceTest, IsHeardThereAndNowhereElse) {
    ASSERT_TRUE(pulse->IsRunning() && pipe.IsRunning());
    pulse->BeginRecording();
    pipe.BeginRecording();
    if (GetParam().session == Session::WithoutSinks) {
        pipe.RemoveSink("sink-a");
        pipe.RemoveSink("sink-b");
    }
    if (GetParam().session == Session::WithoutManager) {
        pipe.EndSessionManager();
    }
    setenv("SKOVRA_SOUND", GetParam().wanted, 1);

    OpenAndPlay(GetParam().session == Session::WithoutManager ? 6.0 : 1.5);
    Watch(10'000);
    Release();

    EXPECT_EQ(IsSound(pipe.EndRecording()), GetParam().onPipeWire);
    EXPECT_EQ(IsSound(pulse->EndRecording()), GetParam().onPulseAudio);
}

INSTANTIATE_TEST_SUITE_P(
    Each, LiveChoiceTest,
    testing::Values(Choice{"PipeWireFirst", Session::Whole, "", true, false},
                    Choice{"PipeWireByName", Session::Whole, "pipewire", true, false},
                    Choice{"PulseAudioByName", Session::Whole, "pulse", false, true},
                    Choice{"NoneByName", Session::Whole, "none", false, false},
                    Choice{"PulseAudioWithoutSinks", Session::WithoutSinks, "", false, true},
                    Choice{"PulseAudioWithoutManager", Session::WithoutManager, "", false, true},
                    Choice{"NothingElseByName", Session::WithoutSinks, "pipewire", false, false}),
    [](const auto& choice) { return std::string(choice.param.name); });
