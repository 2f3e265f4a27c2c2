// Captures what the process writes to standard output, by any function.
#pragma once

#include <cstdio>
#include <string>

namespace doubles {

/// From construction to destruction standard output goes into a file of its own. One at a time.
class StandardOutput {
public:
    StandardOutput();
    ~StandardOutput();

    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    /// The bytes written since the last call, or since construction.
    std::string TakeNew();

private:
    std::FILE* file;
    int original;  // the descriptor of the real standard output
    long read = 0; // bytes of the file taken already
};

} // namespace doubles
