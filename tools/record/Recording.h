// Everything that one run records.
#pragma once

#include "Encoder.h"
#include "Options.h"
#include "Picture.h"
#include "UnfinishedFile.h"
#include "WavFile.h"

#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <span>
#include <string>

namespace record {

/// Reads the last drawing into the picture.
using ReadPicture = std::function<void(Picture&)>;

/// Operations throw exceptions with texts for the user. Files that are incomplete on destruction
/// are removed.
class Recording {
public:
    /// Checks that everything can be written, and starts ffmpeg for a video.
    explicit Recording(const Options& options);

    /// @p samples: left and right interleaved.
    void AddSound(std::span<const float> samples);

    /// The show's next frame, shown at @p ms; it is read only if needed.
    void AddPicture(std::int64_t ms, const ReadPicture& read);

    /// Whether the frame at @p ms is to be recorded.
    bool Wants(std::int64_t ms) const;

    std::int64_t PicturesAdded() const { return picturesAdded; }

    /// The number of frames until HasAll, or until the show ends by itself.
    std::int64_t PicturesWanted() const { return picturesWanted; }

    /// Whether nothing of the rest of the show is needed.
    bool HasAll() const;

    /// Completes the files and gives them their final names.
    void Finish();

private:
    struct SoundFile {
        explicit SoundFile(const std::string& path) : file(path), wav(file.Path()) {}
        UnfinishedFile file;
        WavFile wav;
    };
    struct VideoFile {
        VideoFile(const std::string& path, const VideoFormat& format)
            : file(path), encoder(format, file.Path()) {}
        UnfinishedFile file;
        Encoder encoder;
    };
    struct PendingStill {
        explicit PendingStill(const Still& wanted) : still(wanted), file(wanted.path) {}
        Still still;
        UnfinishedFile file;
    };

    bool WantsWholeShow() const;
    void WriteStills(std::int64_t ms);
    void WriteFrame();

    const Options options;
    std::int64_t picturesWanted;
    std::int64_t picturesAdded = 0;
    Picture picture; // the one that was read last
    std::list<PendingStill> stills;
    std::optional<SoundFile> sound;
    std::optional<VideoFile> video;
};

} // namespace record
