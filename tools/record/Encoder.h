// Pictures and sound as a video file, by the program ffmpeg.
#pragma once

#include "FfmpegArguments.h"
#include "Pipe.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <sys/types.h>

namespace record {

struct Picture;

/// All its operations throw std::runtime_error when ffmpeg is not there or ends too early.
/// SIGPIPE is to be ignored.
class Encoder {
public:
    /// Starts ffmpeg, which overwrites the file @p path.
    Encoder(const VideoFormat& format, const std::string& path);
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    /// Ends ffmpeg if Finish was not called.
    ~Encoder();

    /// @p samples: left and right in turn. What is heard with a picture is to be added before it:
    /// ffmpeg reads both side by side and waits for what is missing.
    void AddSound(std::span<const float> samples);
    void AddPicture(const Picture& picture);

    /// Completes the file.
    void Finish();

private:
    void Start(const std::vector<std::string>& arguments);
    std::size_t WriteSome(std::span<const unsigned char> pictureBytes);
    std::size_t WriteTo(const Pipe& pipe, std::span<const unsigned char> bytes);
    int Wait();

    Pipe pictures;
    Pipe sound;
    pid_t process = -1;                    // -1: none, or its end was seen
    std::vector<unsigned char> soundBytes; // those that ffmpeg has not taken yet
};

} // namespace record
