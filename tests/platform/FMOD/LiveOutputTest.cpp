// The whole library as the show has it: on a real server, and without any.
#include "LiveFixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

class LiveOutputTest : public LiveFixture {};

} // namespace

TEST_F(LiveOutputTest, PlaysSilentlyToTheEndWithoutAnySoundSystem) {
    testing::internal::CaptureStderr();

    OpenAndPlay(2.0);
    const Course course = Watch(10'000);
    Release();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
    EXPECT_EQ(course.lastPosition, 2000U);
    ExpectRealTime("silent", course);
    EXPECT_NEAR(course.strongest, 0.45F, 0.06F); // the show's pictures move all the same
}

TEST_F(LiveOutputTest, LeavesADeviceThatTakesAnyAmount) {
    const std::string configuration = folder.Path("asound.conf");
    std::ofstream(configuration) << "pcm.!default { type null }\nctl.!default { type null }\n";
    setenv("ALSA_CONFIG_PATH", configuration.c_str(), 1);
    testing::internal::CaptureStderr();

    // The viewer is told after two seconds, or a few more on a busy machine.
    OpenAndPlay(10.0);
    const Course course = Watch(20'000);
    Release();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
    EXPECT_EQ(course.lastPosition, 10'000U);
    ExpectRealTime("null", course);
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

TEST_F(LiveOutputTest, IsHeardOnAServerInStep) {
    PrivateServer server;
    ASSERT_TRUE(server.IsRunning());
    server.BeginRecording(); // which also keeps the sink awake

    OpenAndPlay(4.0);
    const Course course = Watch(10'000, &server);
    Release();
    const std::vector<float> recorded = server.EndRecording();

    EXPECT_EQ(course.lastPosition, 4000U);
    ExpectRealTime("heard", course);
    ExpectInStep("heard", recorded, 500, 3900);
    EXPECT_NEAR(*std::max_element(recorded.begin(), recorded.end()), 0.5F, 0.04F);
}
