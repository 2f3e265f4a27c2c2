// Encodes frames and sound as a video file, with the program ffmpeg.
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

/// All operations throw std::runtime_error if ffmpeg is missing or ends too early. SIGPIPE must be
/// ignored.
class Encoder {
public:
    /// Starts ffmpeg, which overwrites the file @p path.
    Encoder(const VideoFormat& format, const std::string& path);
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    /// Ends ffmpeg if Finish was not called.
    ~Encoder();

    /// @p samples: left and right interleaved. The sound of a frame must be added before its
    /// picture: ffmpeg reads both in parallel and waits for whichever is missing.
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
    pid_t process = -1;                    // -1: none, or it has ended
    std::vector<unsigned char> soundBytes; // not read by ffmpeg yet
};

} // namespace record
