#include "Progress.h"

#include <cmath>
#include <ostream>
#include <sstream>

namespace record {

namespace {

constexpr std::int64_t barWidth = 30;

// A rate measured over less than this is meaningless.
constexpr double settlingSeconds = 1;

} // namespace

Progress::Progress(std::ostream& stream, bool isTerminal, std::function<double()> clock)
    : out(stream), terminal(isTerminal), secondsNow(std::move(clock)), startSeconds(secondsNow()) {}

void Progress::Show(std::int64_t done, std::int64_t total) {
    if (!terminal) {
        const std::int64_t tenths = 10 * done / total;
        if (tenths > tenthsShown) {
            tenthsShown = tenths;
            out << 10 * tenths << " %" << TimeLeft(done, total) << "\n" << std::flush;
        }
        return;
    }
    const auto full = static_cast<std::size_t>(barWidth * done / total);
    std::ostringstream line;
    line << '[' << std::string(full, '#') << std::string(barWidth - full, '.') << "] "
         << 100 * done / total << " %" << TimeLeft(done, total);
    std::string bar = line.str();
    if (bar != shown) {
        shown = std::move(bar);
        out << '\r' << shown << "\x1B[K" << std::flush; // erases the rest of a longer bar
    }
}

void Progress::Clear() {
    if (!shown.empty()) {
        shown.clear();
        out << "\r\x1B[K" << std::flush;
    }
}

std::string Progress::TimeLeft(std::int64_t done, std::int64_t total) const {
    const double passed = secondsNow() - startSeconds;
    if (done == 0 || passed < settlingSeconds) {
        return "";
    }
    const double left = passed * static_cast<double>(total - done) / static_cast<double>(done);
    const auto seconds = static_cast<std::int64_t>(std::ceil(left));
    const std::string below = std::to_string(seconds % 60);
    return ", " + std::to_string(seconds / 60) + ":" + (below.size() < 2 ? "0" : "") + below +
           " left";
}

} // namespace record
