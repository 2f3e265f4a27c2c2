// What is decoded is what is heard: nothing is added, and no change of level clicks.
#include "SystemFixture.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <mpg123.h>

class SoundQualityTest : public SystemFixture {
protected:
    SoundQualityTest() { Init(); }

    std::string EncodedWith(const std::vector<float>& frames,
                            const std::vector<std::string>& options) {
        std::string path = folder.Path("music.mp3");
        files::EncodeMp3(path, frames, 44100, options);
        return path;
    }

    FMOD::Channel* PlaySine() { return Play(Open(Encoded(441.0, 10UL * 44100))); }

    void HearOn(int frames) {
        const auto more = script::Pull(frames);
        heard.insert(heard.end(), more.begin(), more.end());
    }

    std::vector<float> heard;
};

struct DeleteHandle {
    void operator()(mpg123_handle* owned) const { mpg123_delete(owned); }
};

// All that libmpg123 makes of a file, with nothing between.
static std::vector<float> DecodedByLibmpg123(const std::string& path) {
    constexpr long flags = MPG123_FORCE_FLOAT | MPG123_FORCE_STEREO | MPG123_GAPLESS | MPG123_QUIET;
    const std::unique_ptr<mpg123_handle, DeleteHandle> handle(mpg123_new(nullptr, nullptr));
    EXPECT_EQ(mpg123_param(handle.get(), MPG123_FLAGS, flags, 0.0), MPG123_OK);
    EXPECT_EQ(mpg123_open(handle.get(), path.c_str()), MPG123_OK);
    std::vector<float> all(10UL * 44100);
    std::size_t bytes = 0;
    int result = mpg123_read(handle.get(), all.data(), 0, &bytes);
    EXPECT_EQ(result, MPG123_NEW_FORMAT);
    result = mpg123_read(handle.get(), all.data(), all.size() * sizeof(float), &bytes);
    EXPECT_EQ(result, MPG123_DONE);
    all.resize(bytes / sizeof(float));
    return all;
}

// Two tones and noise, below full scale.
static std::vector<float> Piece(std::size_t frames) {
    auto piece = tone::Sine(44100.0, 440.0, 1500.0, 0.4, frames);
    std::mt19937 random(7);
    for (float& sample : piece) {
        sample += static_cast<float>(random() % 1000) / 5000.0F - 0.1F;
    }
    return piece;
}

TEST_F(SoundQualityTest, PlaysSampleForSampleWhatLibmpg123Decodes) {
    const std::vector<std::vector<std::string>> encodings = {
        {"-b", "128"}, {"-V", "2"}, {"-b", "96", "-m", "m"}, {"-V", "4", "-m", "m"}, {"-b", "320"}};
    for (const auto& options : encodings) {
        SCOPED_TRACE(options[0] + options[1]);
        const std::string path = EncodedWith(Piece(100'000), options);
        const auto decoded = DecodedByLibmpg123(path);
        ASSERT_EQ(decoded.size(), 200'000U);
        Play(Open(path));

        EXPECT_EQ(script::Pull(100'000), decoded);
    }
}

TEST_F(SoundQualityTest, CutsOffNothingButWhatTheMixCannotHold) {
    // A square of full scale comes out of any lossy encoder with overshoots.
    std::vector<float> square(88'200);
    for (std::size_t i = 0; i < square.size(); ++i) {
        square[i] = i / 2 % 100 < 50 ? 1.0F : -1.0F;
    }
    const std::string path = EncodedWith(square, {"-V", "2"});
    const auto decoded = DecodedByLibmpg123(path);
    ASSERT_GT(*std::max_element(decoded.begin(), decoded.end()), 1.1F);
    FMOD::Sound* sound = Open(path);

    Play(sound);
    const auto full = script::Pull(40'000);
    Play(sound)->setVolume(0.5F);
    const auto half = script::Pull(40'000);

    for (std::size_t i = 0; i < full.size(); ++i) {
        ASSERT_EQ(full[i], std::clamp(decoded[i], -1.0F, 1.0F)) << i;
        ASSERT_EQ(half[i], 0.5F * decoded[i]) << i;
    }
}

TEST_F(SoundQualityTest, ReachesExactlyTheVolumeAskedFor) {
    const std::string path = EncodedWith(Piece(88'200), {"-V", "2"});
    const auto decoded = DecodedByLibmpg123(path);
    FMOD::Channel* channel = Play(Open(path));

    channel->setVolume(0.3F);
    script::Pull(100);
    channel->setVolume(0.7F);
    script::Pull(1000);
    const auto mix = script::Pull(1000);

    for (std::size_t i = 0; i < mix.size(); ++i) {
        ASSERT_EQ(mix[i], 0.7F * decoded[2200 + i]) << i;
    }
}

TEST_F(SoundQualityTest, PausesAndResumesAtOnceWithoutAClick) {
    FMOD::Channel* channel = PlaySine();
    HearOn(10'000);
    for (const int frames : {0, 1, 100, 511, 512, 513, 700}) {
        channel->setPaused(true);
        if (frames > 0) {
            HearOn(frames);
        }
        channel->setPaused(false);
        HearOn(frames + 50);
        channel->setPaused(true);
        HearOn(300);
        channel->setPaused(false);
        HearOn(1000);
    }

    ExpectNoClick(heard);
}

TEST_F(SoundQualityTest, ChangesItsLevelAsOftenAsOneLikesWithoutAClick) {
    FMOD::Channel* channel = PlaySine();
    std::mt19937 random(3);
    for (int i = 0; i < 5000; ++i) {
        switch (random() % 3) {
        case 0:
            channel->setVolume(static_cast<float>(random() % 3) / 2.0F);
            break;
        case 1:
            channel->setMute(random() % 4 == 0);
            break;
        default:
            channel->setPaused(random() % 4 == 0);
        }
        HearOn(1 + static_cast<int>(random() % (i % 2 == 0 ? 5 : 250)));
    }

    ExpectNoClick(heard);
    EXPECT_GT(*std::max_element(heard.begin(), heard.end()), 0.49F);
    EXPECT_GT(std::count(heard.begin(), heard.end(), 0.0F), 10'000);
}
