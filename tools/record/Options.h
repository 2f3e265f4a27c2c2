// The options on the command line.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace record {

struct Still {
    std::int64_t ms; ///< playback position of a frame: the one shown at the requested position
    std::string path;
};

struct Options {
    std::string video; ///< these three: a path, empty if not requested
    std::string framesFolder;
    std::string wav;
    std::vector<Still> stills;
    int width = 1024; ///< pixels
    int height = 768;
    bool trace = false; ///< the show may write to standard output
    bool help = false;
    bool version = false;
};

/// A wrong command line; the text says why.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// @p arguments: without the program's name. Throws UsageError.
Options ParseOptions(std::span<const char* const> arguments);

/// The help text, several lines.
std::string UsageText();

/// The file name extension of @p path, in lower case, without the dot.
std::string Extension(const std::string& path);

} // namespace record
