// Test tones, and their measurement.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tone {

/// @p frames stereo frames: a sine of @p leftHz on the left, of @p rightHz on the right.
std::vector<float> Sine(double rateHz, double leftHz, double rightHz, double amplitude,
                        std::size_t frames);

/// One side (0 left, 1 right) of stereo frames.
std::vector<float> Side(std::span<const float> frames, int side);

struct Measured {
    double hz;
    double amplitude;
};

/// The sine near @p aboutHz (to within a few Hz) in @p samples.
Measured Measure(std::span<const float> samples, double rateHz, double aboutHz);

/// The largest difference between neighbours.
float LargestStep(std::span<const float> samples);

} // namespace tone
