// A log that a test reads along with.
#pragma once

#include <cstdio>
#include <cstdlib>

/// The file that @p variable of the environment names, written line by line. Ends the process with
/// 2 without one.
inline std::FILE* OpenLog(const char* variable) {
    const char* path = std::getenv(variable);
    std::FILE* log = path != nullptr ? std::fopen(path, "w") : nullptr;
    if (log == nullptr) {
        std::perror(variable);
        std::_Exit(2);
    }
    std::setvbuf(log, nullptr, _IOLBF, 0);
    return log;
}
