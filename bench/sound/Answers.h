// The positions that a player returned, to be compared with the ground truth.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct Answer {
    std::int64_t ns; ///< CLOCK_MONOTONIC, in the middle of the call
    double musicMs;
};

void WriteAnswers(const std::string& path, const std::vector<Answer>& answers);
std::vector<Answer> ReadAnswers(const std::string& path);

/// Wakes its caller every millisecond.
class Millisecond {
public:
    Millisecond();

    /// Until the next full millisecond.
    void Wait();

private:
    std::int64_t nextNs;
};

} // namespace bench
