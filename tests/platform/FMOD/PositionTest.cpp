// Where the music is, whatever was done to it: told by the library and counted here.
#include "SystemFixture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace {

// Counts frame by frame which of the music are played when.
struct Counted {
    bool paused = false;
    bool mute = false;
    float volume = 1.0F;
    float gain = 0.0F;
    bool underrun = false;
    std::int64_t music = 0;
    std::int64_t available = 0;       // frames that can be decoded so far
    std::vector<std::int64_t> before; // of the music, before each frame of the output
    std::int64_t length = 0;

    bool IsOver(std::int64_t outputFrame) const {
        return before[static_cast<std::size_t>(outputFrame)] == length;
    }

    bool IsHeldUp() const { return available < length; }

    void Play(int frames) {
        for (int i = 0; i < frames; ++i) {
            if (i % blockFrames == 0) {
                const int needed = std::min(frames - i, blockFrames) + (underrun ? 4410 : 512);
                underrun = IsHeldUp() && available - music < needed;
            }
            PlayOne();
            before.push_back(music);
        }
    }

private:
    static constexpr int blockFrames = 512;

    void PlayOne() {
        const float target = paused || mute || underrun ? 0.0F : volume;
        if (music == 0) {
            gain = target;
        }
        if (((paused || underrun) && gain == 0.0F) || music == length) {
            return;
        }
        gain += std::clamp(target - gain, -1.0F / 512.0F, 1.0F / 512.0F);
        ++music;
    }
};

} // namespace

class PositionTest : public SystemFixture {
protected:
    PositionTest() {
        Init();
        path = folder.Path("tone.mp3");
        files::EncodeMp3(path, tone::Sine(44100.0, 441.0, 441.0, 0.5, length), 44100,
                         {"-b", "128"});
        bytesHeldAfter = files::ReadAll(path).size() * 8 / 5;
    }

    // How many frames can be decoded when reading stops after so many bytes.
    std::int64_t FramesWithin(std::size_t bytes) {
        reads::Reset();
        reads::FailAfter(bytes);
        const auto count = static_cast<std::int64_t>(Decoded(path).size() / 2);
        reads::Reset();
        return count;
    }

    void Begin() {
        counted.length = length;
        counted.available = FramesWithin(bytesHeldAfter);
        ASSERT_GT(counted.available, 44'100);
        ASSERT_LT(counted.available, length - 44'100);
        reads::HoldAfter(bytesHeldAfter);
        channel = Play(Open(path));
        counted.before.assign(1, 0);
    }

    void ChangeSomething(std::mt19937& random) {
        switch (random() % 3) {
        case 0:
            counted.volume = static_cast<float>(random() % 7) / 6.0F;
            channel->setVolume(counted.volume);
            break;
        case 1:
            counted.mute = random() % 3 == 0;
            channel->setMute(counted.mute);
            break;
        default:
            counted.paused = random() % 3 == 0;
            channel->setPaused(counted.paused);
        }
    }

    // Once the decoder is held up nobody waits for more: the music fades out.
    void PlayOn(int frames) {
        while (frames > 0) {
            const int count = std::min(frames, 1000);
            if (counted.IsHeldUp() && counted.available - counted.music < count + 4410) {
                reads::AwaitHeld();
                script::PullAtOnce(count);
            } else {
                script::Pull(count);
            }
            counted.Play(count);
            frames -= count;
        }
    }

    // Some way on, at most 5000 frames behind what the output has.
    void HearOn(std::mt19937& random) {
        const auto handedOut = static_cast<std::int64_t>(counted.before.size()) - 1;
        const auto late = static_cast<std::int64_t>(random() % 5000);
        heard = std::max(heard, handedOut - late);
        script::SetHeard(heard);
    }

    void ExpectThePositionCounted() {
        const auto frames = counted.before[static_cast<std::size_t>(heard)];
        const auto position = static_cast<std::int64_t>(Position(channel));
        EXPECT_EQ(position, std::lround(static_cast<double>(frames) / 44.1))
            << "at output frame " << heard;
        EXPECT_EQ(IsPlaying(channel), !counted.IsOver(heard)) << "at output frame " << heard;
        EXPECT_GE(position, latest);
        latest = position;
    }

    static constexpr std::int64_t length = 176'400;
    std::string path;
    std::size_t bytesHeldAfter = 0;
    FMOD::Channel* channel = nullptr;
    Counted counted;
    std::int64_t heard = 0;
    std::int64_t latest = 0;
};

// The output's clock may be a moment ahead of what it has asked for.
TEST_F(PositionTest, DoesNotStepBackWhenAPauseBeginsBeforeWhatWasTold) {
    channel = Play(Open(path));
    script::Pull(4410);
    script::SetHeard(4410 + 2205);
    ASSERT_EQ(Position(channel), 150U);

    channel->setPaused(true);
    script::Pull(8820);
    EXPECT_EQ(Position(channel), 150U);

    channel->setPaused(false);
    script::Pull(8820);
    script::HearAll();
    EXPECT_GT(Position(channel), 150U);
}

class AnyPlayingTest : public PositionTest, public testing::WithParamInterface<unsigned int> {};

TEST_P(AnyPlayingTest, HasThePositionOfWhatIsHeardAndNeverGoesBack) {
    std::mt19937 random(GetParam());
    Begin();
    bool underran = false;
    for (int step = 0; step < 2000 && !HasFailure() && latest < 4000; ++step) {
        if (random() % 3 == 0) {
            ChangeSomething(random);
        }
        PlayOn(1 + static_cast<int>(random() % (step % 2 == 0 ? 40 : 1500)));
        HearOn(random);
        ExpectThePositionCounted();
        if (counted.underrun && !underran && random() % 8 == 0) {
            underran = true;
            counted.available = length;
            reads::Release();
        }
    }
    EXPECT_TRUE(underran);
    EXPECT_EQ(latest, 4000);
    PlayOn(10'000);
    script::HearAll();
    EXPECT_EQ(Position(channel), 4000U);
}

INSTANTIATE_TEST_SUITE_P(Seed, AnyPlayingTest, testing::Range(1U, 13U));
