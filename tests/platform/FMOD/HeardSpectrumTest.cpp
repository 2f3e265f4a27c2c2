// The spectrum of what is heard.
#include "SystemFixture.h"
#include "Tone.h"

#include <algorithm>
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
