// All that one run records.
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

/// Puts what was drawn last into the picture.
using ReadPicture = std::function<void(Picture&)>;

/// Its operations throw exceptions whose texts are for the user. What is incomplete when it is
/// destroyed is removed.
class Recording {
public:
    /// Makes sure that everything can be written, and starts ffmpeg for a video.
    explicit Recording(const Options& options);

    /// @p samples: left and right in turn.
    void AddSound(std::span<const float> samples);

    /// The show's next picture, shown at @p ms; it is read only if it is wanted.
    void AddPicture(std::int64_t ms, const ReadPicture& read);

    /// Whether the picture at @p ms is to be recorded.
    bool Wants(std::int64_t ms) const;

    std::int64_t PicturesAdded() const { return picturesAdded; }

    /// How many pictures are to be added until HasAll, or until the show ends by itself.
    std::int64_t PicturesWanted() const { return picturesWanted; }

    /// Nothing that the show is still to bring is wanted.
    bool HasAll() const;

    /// Completes what is recorded and gives it its names.
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
