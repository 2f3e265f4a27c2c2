// The transform behind the spectrum, that of each system.
#include "Transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <vector>

// As it is defined, in double precision.
static std::vector<std::complex<double>> Exact(const std::vector<float>& samples) {
    const std::size_t length = samples.size();
    std::vector<std::complex<double>> bins(length / 2 + 1);
    for (std::size_t bin = 0; bin < bins.size(); ++bin) {
        for (std::size_t i = 0; i < length; ++i) {
            const auto turns = static_cast<double>(bin * i % length) / static_cast<double>(length);
            bins[bin] +=
                std::polar(static_cast<double>(samples[i]), -2.0 * std::numbers::pi * turns);
        }
    }
    return bins;
}

static std::vector<float> Noise(std::size_t length) {
    std::vector<float> samples(length);
    unsigned int state = 1;
    for (float& sample : samples) {
        state = state * 1103515245U + 12345U;
        sample = static_cast<float>(state >> 8) / static_cast<float>(1U << 23) - 1.0F;
    }
    return samples;
}

TEST(Transform, IsThatOfItsDefinition) {
    for (const int length : {2, 4, 128, 1024, 2048}) {
        const auto samples = Noise(static_cast<std::size_t>(length));
        const auto exact = Exact(samples);
        std::vector<std::complex<float>> bins(exact.size());

        sound::Transform(length).Run(samples.data(), bins.data());

        for (std::size_t i = 0; i < bins.size(); ++i) {
            EXPECT_NEAR(std::abs(std::complex<double>(bins[i]) - exact[i]), 0.0,
                        1e-6 * std::sqrt(length) * std::log2(length))
                << "bin " << i << " of " << length;
        }
    }
}

TEST(Transform, MayBeRunAgain) {
    const sound::Transform transform(64);
    const auto samples = Noise(64);
    std::vector<std::complex<float>> first(33);
    std::vector<std::complex<float>> second(33);

    transform.Run(samples.data(), first.data());
    transform.Run(samples.data(), second.data());

    EXPECT_EQ(first, second);
}
