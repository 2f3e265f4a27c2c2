// The strength of each frequency band.
#include "Spectrum.h"

#include "Tone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using sound::Spectrum;

static constexpr double rateHz = 44100.0;

// The middle of a band, in Hz.
static double Middle(int band, int bands) {
    return band * rateHz / (2 * bands);
}

static std::vector<float> Analysed(const std::vector<float>& samples, int bands,
                                   FMOD_DSP_FFT_WINDOW window) {
    Spectrum spectrum;
    std::copy_n(samples.begin(), 2 * bands, spectrum.SamplesFor(bands));
    std::vector<float> magnitudes(static_cast<std::size_t>(bands), -1.0F);
    spectrum.Analyse(window, magnitudes.data());
    return magnitudes;
}

static std::vector<float> SineSamples(double hz, double amplitude, int bands) {
    return tone::Side(tone::Sine(rateHz, hz, hz, amplitude, 2 * static_cast<std::size_t>(bands)),
                      0);
}

TEST(Spectrum, AcceptsPowersOfTwoFrom64To8192) {
    for (const int bands : {64, 128, 256, 512, 1024, 2048, 4096, 8192}) {
        EXPECT_TRUE(Spectrum::CanAnalyse(bands)) << bands;
    }
    for (const int bands : {-512, -1, 0, 1, 32, 63, 65, 500, 513, 8191, 16384}) {
        EXPECT_FALSE(Spectrum::CanAnalyse(bands)) << bands;
    }
}

TEST(Spectrum, ReadsOneForAFullScaleSineInTheMiddleOfABand) {
    for (const auto window : {FMOD_DSP_FFT_WINDOW_RECT, FMOD_DSP_FFT_WINDOW_TRIANGLE}) {
        for (const int band : {3, 10, 100, 500}) {
            const auto magnitudes = Analysed(SineSamples(Middle(band, 512), 1.0, 512), 512, window);

            EXPECT_NEAR(magnitudes[static_cast<std::size_t>(band)], 1.0F, 0.001F)
                << "band " << band << ", window " << window;
        }
    }
}

TEST(Spectrum, IsInProportionToTheLevel) {
    const auto magnitudes =
        Analysed(SineSamples(Middle(40, 512), 0.25, 512), 512, FMOD_DSP_FFT_WINDOW_TRIANGLE);

    EXPECT_NEAR(magnitudes[40], 0.25F, 0.001F);
}

TEST(Spectrum, PutsASineIntoItsBandAtEverySize) {
    for (int bands = Spectrum::fewestBands; bands <= Spectrum::mostBands; bands *= 2) {
        const auto samples = SineSamples(Middle(bands / 4, bands), 1.0, bands);

        const auto magnitudes = Analysed(samples, bands, FMOD_DSP_FFT_WINDOW_TRIANGLE);

        const auto largest = std::max_element(magnitudes.begin(), magnitudes.end());
        EXPECT_EQ(largest - magnitudes.begin(), bands / 4);
        EXPECT_NEAR(*largest, 1.0F, 0.001F);
    }
}

TEST(Spectrum, ReadsOneInTheLowestBandForAConstant) {
    const std::vector<float> samples(1024, 1.0F);

    const auto magnitudes = Analysed(samples, 512, FMOD_DSP_FFT_WINDOW_TRIANGLE);

    EXPECT_NEAR(magnitudes[0], 1.0F, 0.001F);
}

TEST(Spectrum, KeepsASineBesideItsBandLowerWithTheTriangle) {
    // Half a band off, the rectangle smears a sine over all bands; the triangle does less.
    const auto samples = SineSamples(Middle(100, 512) + 20.0, 1.0, 512);

    const auto rectangle = Analysed(samples, 512, FMOD_DSP_FFT_WINDOW_RECT);
    const auto triangle = Analysed(samples, 512, FMOD_DSP_FFT_WINDOW_TRIANGLE);

    EXPECT_GT(rectangle[120], 5.0F * triangle[120]);
}

TEST(Spectrum, ReadsZeroInSilence) {
    const std::vector<float> samples(1024, 0.0F);

    const auto magnitudes = Analysed(samples, 512, FMOD_DSP_FFT_WINDOW_TRIANGLE);

    EXPECT_EQ(magnitudes, std::vector<float>(512, 0.0F));
}

TEST(Spectrum, MayBeAskedForDifferentSizesInTurn) {
    Spectrum spectrum;
    std::vector<float> magnitudes(1024, -1.0F);
    for (const int bands : {512, 64, 1024, 64}) {
        const auto samples = SineSamples(Middle(16, bands), 1.0, bands);
        std::copy(samples.begin(), samples.end(), spectrum.SamplesFor(bands));
        spectrum.Analyse(FMOD_DSP_FFT_WINDOW_TRIANGLE, magnitudes.data());

        EXPECT_NEAR(magnitudes[16], 1.0F, 0.001F) << bands;
    }
}
