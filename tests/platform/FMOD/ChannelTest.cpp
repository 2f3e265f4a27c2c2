// One playing of a sound: level, pause, position and end.
#include "Objects.h"
#include "SystemFixture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

class ChannelTest : public SystemFixture {
protected:
    ChannelTest() { Init(); }

    FMOD::Channel* PlayTone(double hz, std::size_t frames, bool paused = false) {
        return Play(Open(Encoded(hz, frames)), paused);
    }

    // How many bytes are read until @p part of the file is decoded: its first 64 KiB are looked at
    // before.
    static std::size_t BytesToReach(const std::string& path, double part) {
        const std::size_t size = files::ReadAll(path).size();
        return std::min<std::size_t>(size, 65536) +
               static_cast<std::size_t>(part * static_cast<double>(size));
    }

    static float Peak(const std::vector<float>& frames) {
        float peak = 0.0F;
        for (const float sample : frames) {
            peak = std::max(peak, std::fabs(sample));
        }
        return peak;
    }

    static void Append(std::vector<float>& all, const std::vector<float>& more) {
        all.insert(all.end(), more.begin(), more.end());
    }
};

TEST_F(ChannelTest, TellsWhatIsHeardToTheNearestMillisecond) {
    FMOD::Channel* channel = PlayTone(441.0, 44100);
    script::Pull(20000);

    script::SetHeard(0);
    EXPECT_EQ(Position(channel), 0U);
    script::SetHeard(22); // 0.4989 ms
    EXPECT_EQ(Position(channel), 0U);
    script::SetHeard(23); // 0.5215 ms
    EXPECT_EQ(Position(channel), 1U);
    script::SetHeard(4387); // 99.478 ms
    EXPECT_EQ(Position(channel), 99U);
    script::SetHeard(4432); // 100.499 ms
    EXPECT_EQ(Position(channel), 100U);
}

TEST_F(ChannelTest, BeginsWhenItsFirstFrameIsHeard) {
    script::Pull(5000); // silence that is on its way to the listener
    FMOD::Channel* channel = PlayTone(441.0, 44100);
    script::Pull(10000);

    script::SetHeard(4999);
    EXPECT_EQ(Position(channel), 0U);
    EXPECT_TRUE(IsPlaying(channel));
    script::SetHeard(5000 + 441);
    EXPECT_EQ(Position(channel), 10U);
}

TEST_F(ChannelTest, PlaysUntilTheLastFrameWasHeardAndStaysThere) {
    FMOD::Channel* channel = PlayTone(441.0, 44100);
    script::Pull(50000);

    script::SetHeard(44070);
    EXPECT_EQ(Position(channel), 999U);
    script::SetHeard(44099);
    EXPECT_TRUE(IsPlaying(channel));
    script::SetHeard(44100);
    EXPECT_FALSE(IsPlaying(channel));
    EXPECT_EQ(Position(channel), 1000U);
    script::SetHeard(50000);
    EXPECT_FALSE(IsPlaying(channel));
    EXPECT_EQ(Position(channel), 1000U);
}

TEST_F(ChannelTest, StaysValidAfterTheEnd) {
    FMOD::Channel* channel = PlayTone(441.0, 4410);
    script::Pull(50000);
    script::HearAll();
    bool flag = true;

    EXPECT_EQ(channel->setVolume(0.5F), FMOD_OK);
    EXPECT_EQ(channel->setMute(false), FMOD_OK);
    EXPECT_EQ(channel->getMute(&flag), FMOD_OK);
    EXPECT_EQ(channel->setPaused(false), FMOD_OK);
    EXPECT_EQ(channel->getPaused(&flag), FMOD_OK);
    EXPECT_EQ(Position(channel), 100U);
}

TEST_F(ChannelTest, PlaysAgainFromTheBeginning) {
    FMOD::Sound* sound = Open(Encoded(441.0, 44100));
    Play(sound);
    const auto first = script::Pull(20000);
    script::HearAll();

    FMOD::Channel* channel = Play(sound);
    EXPECT_EQ(Position(channel), 0U);
    const auto again = script::Pull(20000);
    script::HearAll();

    EXPECT_EQ(again, first);
    EXPECT_EQ(Position(channel), 454U); // 453.515 ms
}

TEST_F(ChannelTest, TakesAVolumeThatIsSetBeforeTheFirstFrameFromThere) {
    const std::string path = Encoded(441.0, 44100);
    auto expected = Decoded(path);
    expected.resize(20'000);
    for (float& sample : expected) {
        sample *= 0.25F;
    }
    FMOD::Channel* channel = Play(Open(path));

    channel->setVolume(0.25F);

    EXPECT_EQ(script::Pull(10000), expected);
}

TEST_F(ChannelTest, TakesVolumesOutsideItsRangeForTheNearestInside) {
    FMOD::Channel* channel = PlayTone(441.0, 88200);

    EXPECT_EQ(channel->setVolume(3.0F), FMOD_OK);
    EXPECT_NEAR(Peak(script::Pull(5000)), 0.5F, 0.01F);
    EXPECT_EQ(channel->setVolume(-1.0F), FMOD_OK);
    script::Pull(2000);
    EXPECT_EQ(Peak(script::Pull(5000)), 0.0F);
}

TEST_F(ChannelTest, RefusesAVolumeThatIsNoNumber) {
    FMOD::Channel* channel = PlayTone(441.0, 44100);

    EXPECT_EQ(channel->setVolume(std::numeric_limits<float>::quiet_NaN()), FMOD_ERR_INVALID_PARAM);
    EXPECT_NEAR(Peak(script::Pull(5000)), 0.5F, 0.01F);
}

TEST_F(ChannelTest, IsMutedWithoutAClickWhileTheMusicGoesOnAndRemembersIt) {
    FMOD::Channel* channel = PlayTone(441.0, 88200);
    auto mix = script::Pull(10000);
    bool mute = true;
    EXPECT_EQ(channel->getMute(&mute), FMOD_OK);
    EXPECT_FALSE(mute);

    channel->setMute(true);
    EXPECT_EQ(channel->getMute(&mute), FMOD_OK);
    EXPECT_TRUE(mute);
    Append(mix, script::Pull(2000));
    const auto muted = script::Pull(5000);
    script::HearAll();
    EXPECT_EQ(Position(channel), 17000U * 10 / 441);
    channel->setMute(false);
    Append(mix, muted);
    Append(mix, script::Pull(2000));
    const auto heard = script::Pull(5000);
    Append(mix, heard);

    EXPECT_EQ(Peak(muted), 0.0F);
    EXPECT_NEAR(Peak(heard), 0.5F, 0.01F);
    ExpectNoClick(mix);
}

TEST_F(ChannelTest, StandsStillWhilePausedAndLosesNothing) {
    FMOD::Channel* channel = PlayTone(441.0, 88200);
    script::Pull(10000);
    channel->setPaused(true);
    script::Pull(40000);

    // The music fades out over 512 frames.
    script::SetHeard(10511);
    EXPECT_EQ(Position(channel), 10511U * 10 / 441);
    script::SetHeard(10513);
    const unsigned int halted = Position(channel);
    EXPECT_EQ(halted, 10512U * 10 / 441);
    script::SetHeard(50000);
    EXPECT_EQ(Position(channel), halted);
    EXPECT_TRUE(IsPlaying(channel));

    channel->setPaused(false);
    script::Pull(4410);
    script::HearAll();
    EXPECT_EQ(Position(channel), (10512U + 4410U) * 10 / 441);
}

TEST_F(ChannelTest, ResumesWithTheFrameAfterTheLast) {
    const std::string path = Encoded(441.0, 88200);
    const auto decoded = Decoded(path);
    FMOD::Channel* channel = Play(Open(path));
    script::Pull(10000);
    channel->setPaused(true);
    script::Pull(10000);
    channel->setPaused(false);
    script::Pull(512); // fades in

    const auto mix = script::Pull(1000);

    const auto expected = std::span(decoded).subspan(2UL * (10512 + 512), 2000);
    EXPECT_TRUE(std::equal(mix.begin(), mix.end(), expected.begin(), expected.end()));
}

TEST_F(ChannelTest, MayStartPausedAndBeginsWithItsFirstFrame) {
    const std::string path = Encoded(441.0, 44100);
    auto expected = Decoded(path);
    expected.resize(20'000);
    FMOD::Channel* channel = Play(Open(path), true);
    bool paused = false;
    channel->getPaused(&paused);
    EXPECT_TRUE(paused);
    EXPECT_EQ(Peak(script::Pull(5000)), 0.0F);
    script::HearAll();
    EXPECT_EQ(Position(channel), 0U);
    EXPECT_TRUE(IsPlaying(channel));

    channel->setPaused(false);

    EXPECT_EQ(script::Pull(10000), expected);
}

TEST_F(ChannelTest, WaitsForADecoderThatDoesNotKeepUp) {
    const std::string path = Encoded(441.0, 52'920);
    const auto decoded = Decoded(path);
    reads::Reset();
    FMOD::Sound* sound = nullptr;
    reads::HoldAfter(BytesToReach(path, 0.5)); // the rest of the file is not there yet
    ASSERT_EQ(system->createSound(path.c_str(), streamed, nullptr, &sound), FMOD_OK);
    FMOD::Channel* channel = Play(sound);

    // Asks for more than can be decoded so far.
    reads::AwaitHeld();
    auto mix = script::PullAtOnce(52'920);
    script::HearAll();
    const unsigned int halted = Position(channel);
    EXPECT_LT(halted, 1200U);
    EXPECT_TRUE(IsPlaying(channel));
    EXPECT_EQ(mix.back(), 0.0F);
    EXPECT_GT(sound::ChannelObject::Of(*channel).voice->Underruns(), 0U);

    reads::Release();
    Append(mix, script::Pull(52'920));
    script::HearAll();

    EXPECT_FALSE(IsPlaying(channel));
    EXPECT_EQ(Position(channel), 1200U);
    // All of the music was played, in order, faded out before the silence and in after it.
    const auto isSilent = [](float sample) { return sample == 0.0F; };
    const auto silence = std::search_n(mix.begin(), mix.end(), 1000, 0.0F);
    const std::ptrdiff_t faded = (silence - mix.begin()) / 2 + 1; // the last one, to zero
    const std::ptrdiff_t again = (std::find_if_not(silence, mix.end(), isSilent) - mix.begin()) / 2;
    const auto frames = static_cast<std::ptrdiff_t>(decoded.size() / 2);
    for (std::ptrdiff_t i = 0; i < frames; ++i) {
        const std::ptrdiff_t steps = i < faded ? faded - 1 - i : i - faded + 1;
        const float gain = static_cast<float>(std::min<std::ptrdiff_t>(steps, 512)) / 512.0F;
        const std::ptrdiff_t at = i < faded ? i : again + i - faded;
        ASSERT_EQ(mix[static_cast<std::size_t>(2 * at)],
                  gain * decoded[static_cast<std::size_t>(2 * i)])
            << i << " of " << faded;
    }
}

TEST_F(ChannelTest, RefusesArgumentsOutOfTheirRange) {
    FMOD::Channel* channel = PlayTone(441.0, 44100);
    unsigned int position = 7;

    EXPECT_EQ(channel->getPosition(nullptr, FMOD_TIMEUNIT_MS), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(channel->getPosition(&position, 2), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(channel->isPlaying(nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(channel->getMute(nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(channel->getPaused(nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(position, 7U);
}
