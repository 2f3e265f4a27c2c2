#include "Score.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace content {

namespace {

constexpr double beatSeconds = barSeconds / 4;

}

std::vector<double> Strokes(const std::string& path, const std::set<std::string>& drums) {
    std::ifstream file(path);
    std::vector<double> strokes;
    double base = 0.0;
    for (std::string line; std::getline(file, line);) {
        // Beats: b START, and i "Grid" START LENGTH "drum" "pattern", from there.
        std::istringstream words(line);
        std::string statement;
        std::string instrument;
        double start = 0.0;
        double length = 0.0;
        std::string drum;
        std::string pattern;
        words >> statement;
        if (statement == "b") {
            words >> base;
        } else if (statement == "i" && words >> std::quoted(instrument) && instrument == "Grid" &&
                   words >> start >> length >> std::quoted(drum) >> std::quoted(pattern) &&
                   drums.contains(drum)) {
            for (std::size_t step = 0; step < pattern.size(); ++step) {
                if (pattern[step] != '-') {
                    strokes.push_back((base + start + static_cast<double>(step) / 4.0) *
                                      beatSeconds);
                }
            }
        }
    }
    if (strokes.empty()) {
        throw std::runtime_error("no strokes of these drums in " + path);
    }
    std::sort(strokes.begin(), strokes.end());
    strokes.erase(std::unique(strokes.begin(), strokes.end()), strokes.end());
    return strokes;
}

double BeatPhase(double seconds) {
    const double beats = seconds / beatSeconds;
    return beats - std::floor(beats + 1e-9);
}

} // namespace content
