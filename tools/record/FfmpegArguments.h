// How the program ffmpeg is called.
#pragma once

#include <string>
#include <vector>

namespace record {

/// What ffmpeg is to make of pictures and sound.
struct VideoFormat {
    std::string extension; ///< mp4, mkv or webm
    int width;             ///< pixels, an even number
    int height;
};

/// The command line for an ffmpeg that reads pictures from descriptor @p pictures and sound from
/// descriptor @p sound and overwrites the file @p path, however that is named.
std::vector<std::string> FfmpegArguments(const VideoFormat& format, int pictures, int sound,
                                         const std::string& path);

} // namespace record
