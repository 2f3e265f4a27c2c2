// How far the recording is, for whoever waits for it.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

namespace record {

class Progress {
public:
    /// @p terminal: a bar that is drawn over, else a line for each tenth.
    /// @p secondsNow: of a clock that never steps back.
    Progress(std::ostream& out, bool terminal, std::function<double()> secondsNow);

    /// @p done of @p total (> 0) are recorded.
    void Show(std::int64_t done, std::int64_t total);

    /// Takes the bar away: something else is to be written.
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
