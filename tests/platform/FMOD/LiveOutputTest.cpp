// The whole library as the show has it: silent without a sound device, and on a real server.
#include "Mp3Files.h"
#include "PrivateServer.h"
#include "Tone.h"

#include <FMOD/FMOD.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace {

const std::string silentNotice = "skovra: no sound device, playing silently\n";

// What a viewer sees of a sound that is played to its end.
struct Course {
    unsigned int firstPosition = 0;
    unsigned int lastPosition = 0;
    unsigned int differentPositions = 0;
    bool everBack = false;
    float strongest = 0.0F; ///< of all spectra
};

class LiveOutputTest : public testing::Test {
protected:
    FMOD::Channel* PlayTone(double seconds) {
        const auto frames = static_cast<std::size_t>(44100.0 * seconds);
        files::EncodeMp3(folder.Path("tone.mp3"), tone::Sine(44100.0, 1000.0, 1000.0, 0.5, frames),
                         44100);
        FMOD::Sound* sound = nullptr;
        FMOD::Channel* channel = nullptr;
        EXPECT_EQ(FMOD::System_Create(&system), FMOD_OK);
        EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, nullptr), FMOD_OK);
        EXPECT_EQ(system->createSound(folder.Path("tone.mp3").c_str(),
                                      FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM, nullptr, &sound),
                  FMOD_OK);
        EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel), FMOD_OK);
        return channel;
    }

    // Looks every few milliseconds until @p until is reached or the sound is over.
    Course Watch(FMOD::Channel* channel, unsigned int until) {
        Course course;
        unsigned int last = 0;
        bool playing = true;
        std::vector<float> spectrum(512);
        EXPECT_EQ(channel->getPosition(&course.firstPosition, FMOD_TIMEUNIT_MS), FMOD_OK);
        while (playing && last < until) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            EXPECT_EQ(channel->isPlaying(&playing), FMOD_OK);
            EXPECT_EQ(channel->getPosition(&course.lastPosition, FMOD_TIMEUNIT_MS), FMOD_OK);
            EXPECT_EQ(system->getSpectrum(spectrum.data(), 512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE),
                      FMOD_OK);
            course.everBack = course.everBack || course.lastPosition < last;
            course.differentPositions += course.lastPosition != last ? 1 : 0;
            course.strongest =
                std::max(course.strongest, *std::max_element(spectrum.begin(), spectrum.end()));
            last = course.lastPosition;
        }
        return course;
    }

    files::Folder folder;
    FMOD::System* system = nullptr;
};

} // namespace

TEST_F(LiveOutputTest, PlaysSilentlyToTheEndWithoutAnySoundSystem) {
    HideSoundSystems();
    testing::internal::CaptureStderr();

    const Course course = Watch(PlayTone(1.0), 10'000);
    system->release();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
    EXPECT_EQ(course.lastPosition, 1000U);
    EXPECT_FALSE(course.everBack);
    EXPECT_GT(course.differentPositions, 5U);
    EXPECT_NEAR(course.strongest, 0.45F, 0.06F); // the show's pictures move all the same
}

TEST_F(LiveOutputTest, EndsWithTheProcessWhileItPlays) {
    HideSoundSystems();
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(
        {
            Watch(PlayTone(1.0), 100);
            std::filesystem::remove_all(folder.Path("")); // no destructor will
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(LiveOutputTest, IsHeardOnAServer) {
    PrivateServer server;
    ASSERT_TRUE(server.IsRunning());
    server.BeginRecording(); // which also keeps the sink awake

    const Course course = Watch(PlayTone(4.0), 10'000);
    system->release();
    const auto left = tone::Side(server.EndRecording(), 0);

    EXPECT_EQ(course.lastPosition, 4000U);
    EXPECT_FALSE(course.everBack);
    EXPECT_GT(course.differentPositions, 20U);
    // A fifth of a second of the tone, from where it is first at its full level.
    const auto begin = std::find_if(left.begin(), left.end(), [](float s) { return s > 0.49F; });
    ASSERT_GT(left.end() - begin, 2 * 8820);
    const auto part =
        std::span(left).subspan(static_cast<std::size_t>(begin - left.begin()) + 441, 8820);
    const auto measured = tone::Measure(part, 44100.0, 1000.0);
    EXPECT_NEAR(measured.hz, 1000.0, 1.0);
    EXPECT_NEAR(measured.amplitude, 0.5, 0.02);
}

TEST_F(LiveOutputTest, GoesOnSilentlyWhenTheServerDies) {
    PrivateServer server;
    ASSERT_TRUE(server.IsRunning());
    server.BeginRecording();
    FMOD::Channel* channel = PlayTone(4.0);
    const Course before = Watch(channel, 2000);

    testing::internal::CaptureStderr();
    server.Kill();
    const Course after = Watch(channel, 10'000);
    system->release();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
    EXPECT_GE(after.firstPosition, before.lastPosition);
    EXPECT_FALSE(after.everBack);
    EXPECT_EQ(after.lastPosition, 4000U);
}

TEST_F(LiveOutputTest, ReachesTheEndOnAServerThatHangs) {
    PrivateServer server;
    ASSERT_TRUE(server.IsRunning());
    server.BeginRecording();
    FMOD::Channel* channel = PlayTone(4.0);
    Watch(channel, 2000);

    server.Stop();
    const Course after = Watch(channel, 10'000);
    system->release();
    server.Continue();

    EXPECT_FALSE(after.everBack);
    EXPECT_EQ(after.lastPosition, 4000U);
}
