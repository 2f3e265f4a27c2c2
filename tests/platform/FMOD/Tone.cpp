// Sines to test with, and what is left of them.
#include "Tone.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace tone {

static constexpr double turn = 2.0 * std::numbers::pi;

std::vector<float> Sine(double rateHz, double leftHz, double rightHz, double amplitude,
                        std::size_t frames) {
    std::vector<float> samples;
    samples.reserve(2 * frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const double seconds = static_cast<double>(i) / rateHz;
        samples.push_back(static_cast<float>(amplitude * std::sin(turn * leftHz * seconds)));
        samples.push_back(static_cast<float>(amplitude * std::sin(turn * rightHz * seconds)));
    }
    return samples;
}

std::vector<float> Side(std::span<const float> frames, int side) {
    std::vector<float> samples;
    for (std::size_t i = static_cast<std::size_t>(side); i < frames.size(); i += 2) {
        samples.push_back(frames[i]);
    }
    return samples;
}

// Half the amplitude and the phase of the sine of that frequency, seen through a Hann window.
static std::complex<double> Correlate(std::span<const float> samples, double rateHz, double hz) {
    std::complex<double> sum = 0.0;
    double weights = 0.0;
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto position = static_cast<double>(i);
        const double weight = 0.5 - 0.5 * std::cos(turn * position / count);
        sum += weight * samples[i] * std::polar(1.0, -turn * hz * position / rateHz);
        weights += weight;
    }
    return sum / weights;
}

Measured Measure(std::span<const float> samples, double rateHz, double aboutHz) {
    double hz = aboutHz;
    // The phase runs away from the first half to the second by as much as the frequency is wrong.
    for (int round = 0; round < 4; ++round) {
        const std::size_t half = samples.size() / 2;
        const auto first = Correlate(samples.first(half), rateHz, hz);
        const auto second = Correlate(samples.subspan(half, half), rateHz, hz);
        const auto seconds = static_cast<double>(half) / rateHz;
        const double expected = turn * hz * seconds;
        const double drift = std::arg(second / first * std::polar(1.0, -expected));
        hz += drift / (turn * seconds);
    }
    return {hz, 2.0 * std::abs(Correlate(samples, rateHz, hz))};
}

float LargestStep(std::span<const float> samples) {
    float largest = 0.0F;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        largest = std::max(largest, std::fabs(samples[i] - samples[i - 1]));
    }
    return largest;
}

} // namespace tone
