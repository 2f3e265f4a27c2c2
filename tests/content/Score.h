// When drums are played in the score of the music.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace content {

/// The times in seconds, ascending, at which the patterns of the Csound file @p path play one of
/// @p drums. Throws std::runtime_error if there are none.
std::vector<double> Strokes(const std::string& path, const std::set<std::string>& drums);

/// The position of @p seconds within its beat, 0 to 1.
double BeatPhase(double seconds);

inline constexpr double barSeconds = 1.875;

} // namespace content
