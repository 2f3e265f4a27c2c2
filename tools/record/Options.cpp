#include "Options.h"

#include "VirtualTime.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <optional>
#include <set>
#include <string_view>

namespace record {

namespace {

constexpr int longestSide = 16384;

/// The whole of @p text as a number.
std::optional<std::int64_t> Number(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(number) : std::nullopt;
}

void ReadSize(Options& options, std::string_view text) {
    const std::size_t cross = text.find('x');
    const auto width = Number(text.substr(0, cross));
    const auto height = cross == text.npos ? std::nullopt : Number(text.substr(cross + 1));
    const auto fits = [](std::optional<std::int64_t> side) {
        return side && *side >= 1 && *side <= longestSide;
    };
    if (!fits(width) || !fits(height)) {
        throw UsageError("--size takes WIDTHxHEIGHT, each from 1 to " +
                         std::to_string(longestSide) + ", not '" + std::string(text) + "'");
    }
    options.width = static_cast<int>(*width);
    options.height = static_cast<int>(*height);
}

void ReadStill(Options& options, std::string_view text) {
    const std::size_t equals = text.find('=');
    const auto ms = Number(text.substr(0, equals));
    if (!ms || equals == text.npos || Extension(std::string(text)) != "png") {
        throw UsageError("--still takes MS=FILE.png, not '" + std::string(text) + "'");
    }
    if (*ms < 0 || *ms > lastPictureMs) {
        throw UsageError("the show's pictures are from 0 to " + std::to_string(lastPictureMs) +
                         " ms, there is none at " + std::to_string(*ms));
    }
    options.stills.push_back({*ms - *ms % picturePeriodMs, std::string(text.substr(equals + 1))});
}

void SetPath(std::string& path, std::string_view name, std::string_view text) {
    if (text.empty()) {
        throw UsageError(std::string(name) + " takes a path");
    }
    if (!path.empty()) {
        throw UsageError(std::string(name) + " is asked for twice");
    }
    path = text;
}

void ReadVideo(Options& options, std::string_view path) {
    SetPath(options.video, "a video", path);
    const std::string extension = Extension(options.video);
    if (extension != "mp4" && extension != "mkv" && extension != "webm") {
        throw UsageError("a video ends in .mp4, .mkv or .webm, not '" + options.video + "'");
    }
}

/// False: there is no such option, or it takes no value.
bool ReadOptionWithValue(Options& options, std::string_view name, std::string_view value) {
    if (name == "--size") {
        ReadSize(options, value);
    } else if (name == "--still") {
        ReadStill(options, value);
    } else if (name == "--frames") {
        SetPath(options.framesFolder, name, value);
    } else if (name == "--wav") {
        SetPath(options.wav, name, value);
    } else {
        return false;
    }
    return true;
}

bool ReadOptionAlone(Options& options, std::string_view name) {
    if (name == "--trace") {
        options.trace = true;
    } else if (name == "--help") {
        options.help = true;
    } else if (name == "--version") {
        options.version = true;
    } else {
        return false;
    }
    return true;
}

void RequirePossible(const Options& options) {
    if (options.video.empty() && options.framesFolder.empty() && options.wav.empty() &&
        options.stills.empty()) {
        throw UsageError("nothing to record: name a video, or ask for --frames, --still or --wav");
    }
    if (!options.video.empty() && (options.width % 2 != 0 || options.height % 2 != 0)) {
        throw UsageError("a video's width and height are even numbers");
    }
    std::set<std::string> paths = {options.video};
    bool once = options.wav.empty() || paths.insert(options.wav).second;
    for (const Still& still : options.stills) {
        once = paths.insert(still.path).second && once;
    }
    if (!once) {
        throw UsageError("two things are to be written to one file");
    }
}

} // namespace

std::string Extension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension.empty() ? extension : extension.substr(1);
}

Options ParseOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (!argument.starts_with('-')) {
            ReadVideo(options, argument);
            continue;
        }
        if (ReadOptionAlone(options, argument)) {
            continue;
        }
        const std::size_t equals = argument.find('=');
        const bool joined = equals != argument.npos;
        const bool followed = i + 1 < arguments.size();
        const std::string_view value = joined     ? argument.substr(equals + 1)
                                       : followed ? std::string_view(arguments[i + 1])
                                                  : std::string_view();
        if (!ReadOptionWithValue(options, argument.substr(0, equals), value)) {
            throw UsageError("no such option: '" + std::string(argument) + "'");
        }
        i += joined ? 0 : 1;
    }
    if (!options.help && !options.version) {
        RequirePossible(options);
    }
    return options;
}

std::string UsageText() {
    return "usage: skovra-record [OPTION]... [OUT.mp4 | OUT.mkv | OUT.webm]\n"
           "\n"
           "Records the show: 40 pictures a second and its sound, none of them missed,\n"
           "without a display and without a sound device.\n"
           "\n"
           "  --size WIDTHxHEIGHT   of the pictures, in pixels; 1024x768 unless told otherwise\n"
           "  --frames FOLDER       write every picture to FOLDER/00000.png and so on\n"
           "  --still MS=FILE.png   write the picture at that music position; any number of these\n"
           "  --wav FILE            write the sound, as 32-bit float samples\n"
           "  --trace               let the show write to standard output what it does live\n"
           "  --help, --version     say this, or the version, and do nothing\n";
}

} // namespace record
