// The command line for the program ffmpeg.
#pragma once

#include <string>
#include <vector>

namespace record {

/// The video that ffmpeg is to make.
struct VideoFormat {
    std::string extension; ///< mp4, mkv or webm
    int width;             ///< pixels, an even number
    int height;
};

/// The command line for an ffmpeg that reads pictures from descriptor @p pictures and sound from
/// descriptor @p sound and overwrites the file @p path, which may have any name.
std::vector<std::string> FfmpegArguments(const VideoFormat& format, int pictures, int sound,
                                         const std::string& path);

} // namespace record
