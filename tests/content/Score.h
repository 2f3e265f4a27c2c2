// When the score of the music has drums struck.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace content {

/// Seconds from the start, rising, at which the patterns of the Csound file @p path strike one of
/// @p drums. Throws std::runtime_error when there is no such stroke.
std::vector<double> Strokes(const std::string& path, const std::set<std::string>& drums);

/// Where within its beat @p seconds lies, 0 to 1.
double BeatPhase(double seconds);

inline constexpr double barSeconds = 1.875;

} // namespace content
