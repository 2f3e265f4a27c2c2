// The progress display of a recording.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

namespace record {

class Progress {
public:
    /// @p terminal: a bar that is redrawn, else a line for each tenth.
    /// @p secondsNow: a monotonic clock.
    Progress(std::ostream& out, bool terminal, std::function<double()> secondsNow);

    /// @p done of @p total (> 0) frames are recorded.
    void Show(std::int64_t done, std::int64_t total);

    /// Removes the bar, before other output.
    void Clear();

private:
    std::string TimeLeft(std::int64_t done, std::int64_t total) const;

    std::ostream& out;
    bool terminal;
    std::function<double()> secondsNow;
    double startSeconds;
    std::int64_t tenthsShown = 0;
    std::string shown; // the bar, empty if none
};

} // namespace record
