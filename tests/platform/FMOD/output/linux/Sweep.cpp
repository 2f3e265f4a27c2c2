// A sound that tells its own position: a tone that rises steadily.
#include "Sweep.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sweep {

static constexpr double rateHz = 44100.0;
static constexpr double lowestHz = 400.0;
static constexpr double riseHz = 400.0; // a second

static constexpr std::size_t halfWindow = 1102;

std::vector<float> Frames(std::size_t frames) {
    std::vector<float> samples;
    samples.reserve(2 * frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const double seconds = static_cast<double>(i) / rateHz;
        const double turns = lowestHz * seconds + riseHz * seconds * seconds / 2.0;
        const auto sample = static_cast<float>(0.5 * std::sin(2.0 * std::numbers::pi * turns));
        samples.insert(samples.end(), 2, sample);
    }
    return samples;
}

// From the first to the last rise through zero; 0: there are no two.
static double MeanHz(std::span<const float> samples) {
    double first = 0.0;
    double last = 0.0;
    int rises = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (samples[i - 1] < 0.0F && samples[i] >= 0.0F) {
            const double part = samples[i - 1] / (samples[i - 1] - samples[i]);
            last = static_cast<double>(i - 1) + part;
            first = rises == 0 ? last : first;
            ++rises;
        }
    }
    return rises < 2 ? 0.0 : (rises - 1) * rateHz / (last - first);
}

std::optional<double> EndMs(std::span<const float> side) {
    if (side.size() < 2 * halfWindow) {
        return std::nullopt;
    }
    const auto window = side.last(2 * halfWindow);
    constexpr double halfSeconds = halfWindow / rateHz;
    const double firstHz = MeanHz(window.first(halfWindow));
    const double secondHz = MeanHz(window.last(halfWindow));
    const double rise = secondHz - firstHz - riseHz * halfSeconds;
    if (firstHz == 0.0 || secondHz == 0.0 || std::fabs(rise) > 0.1 * riseHz * halfSeconds) {
        return std::nullopt;
    }
    const double middleSeconds = (MeanHz(window) - lowestHz) / riseHz;
    return 1000.0 * (middleSeconds + halfSeconds);
}

} // namespace sweep
