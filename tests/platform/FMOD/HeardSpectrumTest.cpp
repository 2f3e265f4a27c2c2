// The spectrum of what is heard.
#include "SystemFixture.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

class HeardSpectrumTest : public SystemFixture {
protected:
    HeardSpectrumTest() { Init(); }

    static constexpr double BandMiddle(int band) { return band * 44100.0 / 1024.0; }

    // Two seconds: band 20 on the left, band 60 on the right; band 200 in the second second.
    FMOD::Channel* PlayTones() {
        auto frames = tone::Sine(44100.0, BandMiddle(20), BandMiddle(60), 1.0, 44100);
        const auto later = tone::Sine(44100.0, BandMiddle(200), BandMiddle(200), 1.0, 44100);
        frames.insert(frames.end(), later.begin(), later.end());
        files::EncodeMp3(folder.Path("tones.mp3"), frames, 44100);
        return Play(Open(folder.Path("tones.mp3")));
    }

    // A click every half a second.
    FMOD::Channel* PlayClicks() {
        std::vector<float> frames(4UL * 44100, 0.0F);
        for (std::size_t i = 22'050; i < frames.size() / 2; i += 22'050) {
            frames[2 * i] = 1.0F;
        }
        files::EncodeMp3(folder.Path("clicks.mp3"), frames, 44100, {"-b", "320"});
        return Play(Open(folder.Path("clicks.mp3")));
    }

    static std::int64_t Loudest(const std::vector<float>& mix) {
        return (std::max_element(mix.begin(), mix.end()) - mix.begin()) / 2;
    }

    // The energy in the samples analysed when @p frame is heard, each counting alike.
    double EnergyAt(std::int64_t frame) {
        std::vector<float> spectrum(512);
        script::SetHeard(frame);
        EXPECT_EQ(system->getSpectrum(spectrum.data(), 512, 0, FMOD_DSP_FFT_WINDOW_RECT), FMOD_OK);
        return std::inner_product(spectrum.begin(), spectrum.end(), spectrum.begin(), 0.0);
    }

    // Half a millisecond after a click it is in the 1024 samples analysed, before it is not; and
    // the position asked for then is that of the click, @p behind frames of silence left out.
    void ExpectWindowAround(std::int64_t click, FMOD::Channel* channel, std::int64_t behind) {
        constexpr std::int64_t halfMs = 22;
        const double whole = EnergyAt(click + 512);
        EXPECT_LT(EnergyAt(click - halfMs), 0.1 * whole);
        EXPECT_GT(EnergyAt(click + halfMs), 0.9 * whole);
        EXPECT_EQ(Position(channel), (click + halfMs - behind) * 10 / 441);
        EXPECT_GT(EnergyAt(click + 1024 - halfMs), 0.9 * whole);
        EXPECT_LT(EnergyAt(click + 1024 + halfMs), 0.1 * whole);
    }

    std::vector<float> Read(int side = 0) {
        std::vector<float> spectrum(512, -1.0F);
        EXPECT_EQ(system->getSpectrum(spectrum.data(), 512, side, FMOD_DSP_FFT_WINDOW_TRIANGLE),
                  FMOD_OK);
        return spectrum;
    }

    static long Strongest(const std::vector<float>& spectrum) {
        return std::max_element(spectrum.begin(), spectrum.end()) - spectrum.begin();
    }
};

static const std::vector<float> silence(512, 0.0F);

TEST_F(HeardSpectrumTest, ReadsOneForAFullScaleSine) {
    PlayTones();
    script::Pull(20000);
    script::HearAll();

    EXPECT_NEAR(Read()[20], 1.0F, 0.02F);
    EXPECT_EQ(Strongest(Read()), 20);
}

TEST_F(HeardSpectrumTest, IsThatOfTheSideAskedFor) {
    PlayTones();
    script::Pull(20000);
    script::HearAll();

    EXPECT_EQ(Strongest(Read(0)), 20);
    EXPECT_EQ(Strongest(Read(1)), 60);
}

TEST_F(HeardSpectrumTest, IsThatOfTheMomentHeardNotOfTheLatestMixed) {
    PlayTones();
    script::Pull(44100 + 4410);

    script::SetHeard(44100);
    EXPECT_EQ(Strongest(Read()), 20);
    script::SetHeard(44100 + 1024);
    EXPECT_EQ(Strongest(Read()), 200);
}

TEST_F(HeardSpectrumTest, EndsWithTheFrameHeardLast) {
    FMOD::Channel* channel = PlayClicks();
    const auto mix = script::Pull(30'000);
    ExpectWindowAround(Loudest(mix), channel, 0);

    channel->setPaused(true);
    script::Pull(10'000); // from here on the output's time and the music's differ
    channel->setPaused(false);
    const auto later = script::Pull(30'000);
    ExpectWindowAround(40'000 + Loudest(later), channel, 10'000 - 512);
}

TEST_F(HeardSpectrumTest, IsZeroBeforeAnythingIsHeard) {
    EXPECT_EQ(Read(), silence);

    PlayTones();
    script::Pull(20000);

    EXPECT_EQ(Read(), silence);
}

TEST_F(HeardSpectrumTest, FollowsVolumeAndMute) {
    FMOD::Channel* channel = PlayTones();
    channel->setVolume(0.5F);
    script::Pull(10000);
    script::HearAll();
    EXPECT_NEAR(Read()[20], 0.5F, 0.01F);

    channel->setMute(true);
    script::Pull(512 + 1024);
    script::HearAll();
    EXPECT_EQ(Read(), silence);
}

TEST_F(HeardSpectrumTest, IsZeroWhilePaused) {
    FMOD::Channel* channel = PlayTones();
    script::Pull(10000);
    channel->setPaused(true);
    script::Pull(512 + 1024);
    script::HearAll();

    EXPECT_EQ(Read(), silence);
}

TEST_F(HeardSpectrumTest, IsZeroAfterTheEnd) {
    PlayTones();
    script::Pull(88200 + 1024);
    script::HearAll();

    EXPECT_EQ(Read(), silence);
}

TEST_F(HeardSpectrumTest, HasAsManyBandsAsAskedFor) {
    PlayTones();
    script::Pull(40000);
    script::HearAll();
    for (int bands = 64; bands <= 8192; bands *= 2) {
        std::vector<float> spectrum(static_cast<std::size_t>(bands) + 1, -1.0F);

        EXPECT_EQ(system->getSpectrum(spectrum.data(), bands, 0, FMOD_DSP_FFT_WINDOW_RECT),
                  FMOD_OK);

        EXPECT_EQ(spectrum.back(), -1.0F); // nothing is written behind the end
        spectrum.pop_back();
        EXPECT_NEAR(static_cast<double>(Strongest(spectrum)), 20.0 * bands / 512.0, 1.0);
    }
}

// As much is handed out that is not heard yet as with the longest latency.
TEST_F(HeardSpectrumTest, ReachesBackAsFarAsTheLongestWindow) {
    PlayTones();
    script::Pull(80'000);
    std::vector<float> spectrum(8192);
    script::SetHeard(80'000 - 44'100);

    EXPECT_EQ(system->getSpectrum(spectrum.data(), 8192, 0, FMOD_DSP_FFT_WINDOW_RECT), FMOD_OK);

    EXPECT_NEAR(spectrum[20 * 8192 / 512], 1.0F, 0.02F);
}

TEST_F(HeardSpectrumTest, RefusesArgumentsOutOfTheirRange) {
    std::vector<float> values(512, -1.0F);
    const auto triangle = FMOD_DSP_FFT_WINDOW_TRIANGLE;
    const auto unknown = static_cast<FMOD_DSP_FFT_WINDOW>(2);

    EXPECT_EQ(system->getSpectrum(nullptr, 512, 0, triangle), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->getSpectrum(values.data(), 500, 0, triangle), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->getSpectrum(values.data(), 32, 0, triangle), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->getSpectrum(values.data(), 16384, 0, triangle), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->getSpectrum(values.data(), 512, -1, triangle), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->getSpectrum(values.data(), 512, 2, triangle), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->getSpectrum(values.data(), 512, 0, unknown), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(values, std::vector<float>(512, -1.0F));
}
