// The show's bars for a piece of music, frame by frame, as its own scene draws them.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace content {

inline constexpr int sampleRateHz = 44100;
inline constexpr int frameMs = 25;
inline constexpr int endOfShowMs = 33000;

/// Heights from the lower edge of the window, in pixels of a screen 768 lines high.
using Bars = std::array<double, 255>;

struct Performance {
    std::vector<Bars> frames;   ///< frame n at 25 n ms of music, to the end of the show
    std::vector<float> samples; ///< interleaved stereo, the whole file, without its padding
};

/// Plays the MP3 file @p path to the show in virtual time.
Performance Perform(const std::string& path);

/// The x coordinate of the middle of bar @p bar, in pixels of a screen 1024 wide.
double MiddleOfBar(int bar);

} // namespace content
