// Checks figures against bounds, and prints a line for each.
#pragma once

#include <limits>
#include <string>

namespace content {

inline constexpr double unbounded = std::numeric_limits<double>::infinity();

class Verdicts {
public:
    /// Prints @p name, @p value, @p unit and whether the value lies in [@p low, @p high].
    void Check(const std::string& name, double value, const std::string& unit, double low,
               double high);

    /// Prints a figure that has no bounds.
    static void Print(const std::string& name, double value, const std::string& unit);

    bool allPass = true;
};

} // namespace content
