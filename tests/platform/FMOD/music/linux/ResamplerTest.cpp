// Frames at a file's own rate -> frames at the output's rate.
#include "Resampler.h"

#include "Tone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <span>
#include <vector>

using sound::Resampler;

static std::vector<float> Resampled(int fromHz, const std::vector<float>& frames,
                                    std::size_t blockFrames) {
    Resampler resampler(fromHz);
    std::vector<float> out;
    const std::span<const float> all(frames);
    for (std::size_t at = 0; at < all.size(); at += 2 * blockFrames) {
        resampler.Process(all.subspan(at, std::min(2 * blockFrames, all.size() - at)), out);
    }
    resampler.Finish(out);
    return out;
}

TEST(Resampler, KeepsTheLengthInTime) {
    for (const int rateHz : {8000, 11025, 16000, 22050, 32000, 48000}) {
        const std::vector<float> twoSeconds(4 * static_cast<std::size_t>(rateHz), 0.0F);

        const auto out = Resampled(rateHz, twoSeconds, 576);

        EXPECT_NEAR(static_cast<double>(out.size()) / 2.0, 88200.0, 1.0) << rateHz;
    }
}

TEST(Resampler, KeepsASinesFrequencyLevelAndSides) {
    const auto frames = tone::Sine(48000.0, 1000.0, 3000.0, 0.5, 48000);

    const auto out = Resampled(48000, frames, 1152);

    const auto left = tone::Measure(tone::Side(out, 0), 44100.0, 1000.0);
    const auto right = tone::Measure(tone::Side(out, 1), 44100.0, 3000.0);
    EXPECT_NEAR(left.hz, 1000.0, 0.01);
    EXPECT_NEAR(left.amplitude, 0.5, 0.0001);
    EXPECT_NEAR(right.hz, 3000.0, 0.01);
    EXPECT_NEAR(right.amplitude, 0.5, 0.0001);
}

TEST(Resampler, StaysInStepWithItsInput) {
    // A single pulse after half a second is heard after half a second.
    std::vector<float> frames(96'000, 0.0F);
    frames[48'000] = 1.0F;

    const auto left = tone::Side(Resampled(48000, frames, 1152), 0);

    EXPECT_EQ(std::max_element(left.begin(), left.end()) - left.begin(), 22050);
}

// How far what is not the sine of @p hz stays below it, in dB: the sine that fits best is taken
// away.
static double Purity(std::span<const float> samples, double hz) {
    using Complex = std::complex<double>;
    Complex sum = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double turns = hz * static_cast<double>(i) / 44100.0;
        sum += static_cast<double>(samples[i]) * std::polar(1.0, -2.0 * std::numbers::pi * turns);
    }
    const Complex fitting = 2.0 * sum / static_cast<double>(samples.size());
    double rest = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double turns = hz * static_cast<double>(i) / 44100.0;
        const Complex expected = fitting * std::polar(1.0, 2.0 * std::numbers::pi * turns);
        rest += std::pow(samples[i] - expected.real(), 2.0);
    }
    const double power = std::norm(fitting) / 2.0 * static_cast<double>(samples.size());
    return 10.0 * std::log10(power / rest);
}

TEST(Resampler, AddsNothingToASineButWhatSinglePrecisionRoundsOff) {
    for (const int rateHz : {8000, 11025, 12000, 16000, 22050, 24000, 32000, 48000}) {
        for (const double hz : {100.0, 1000.0, 3500.0}) {
            const auto frames =
                tone::Sine(rateHz, hz, hz, 0.9, 2 * static_cast<std::size_t>(rateHz));

            const auto left = tone::Side(Resampled(rateHz, frames, 1152), 0);

            // A second in the middle: whole periods.
            EXPECT_GT(Purity(std::span(left).subspan(22'050, 44'100), hz), 145.0)
                << hz << " Hz at " << rateHz << " Hz";
        }
    }
}

TEST(Resampler, MakesTheSameOfAnyBlocks) {
    const auto frames = tone::Sine(32000.0, 440.0, 880.0, 0.5, 10000);

    EXPECT_EQ(Resampled(32000, frames, 1152), Resampled(32000, frames, 7));
}
