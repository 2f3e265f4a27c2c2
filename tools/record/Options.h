// What the command line asks for.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace record {

struct Still {
    std::int64_t ms; ///< music position of a picture of the show: the one to be seen when asked for
    std::string path;
};

struct Options {
    std::string video; ///< these three: a path, empty if not wanted
    std::string framesFolder;
    std::string wav;
    std::vector<Still> stills;
    int width = 1024; ///< pixels
    int height = 768;
    bool trace = false; ///< the show may write to standard output
    bool help = false;
    bool version = false;
};

/// The command line asks for what there is not; the text says why.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// @p arguments: without the program's name. Throws UsageError.
Options ParseOptions(std::span<const char* const> arguments);

/// Several lines: how the program is called.
std::string UsageText();

/// The file name extension of @p path, in lower case, without the dot.
std::string Extension(const std::string& path);

} // namespace record
