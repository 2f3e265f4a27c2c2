#include "Verdicts.h"

#include <cstdio>

namespace content {

namespace {

std::string Bound(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

} // namespace

void Verdicts::Check(const std::string& name, double value, const std::string& unit, double low,
                     double high) {
    const bool passes = value >= low && value <= high;
    allPass = allPass && passes;
    std::printf("%-10s  %-52s %10.3f %-5s [%s, %s]\n", passes ? "pass" : "fall short", name.c_str(),
                value, unit.c_str(), Bound(low).c_str(), Bound(high).c_str());
}

void Verdicts::Print(const std::string& name, double value, const std::string& unit) {
    std::printf("%-10s  %-52s %10.3f %s\n", "", name.c_str(), value, unit.c_str());
}

} // namespace content
