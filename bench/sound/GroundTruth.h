// The ground truth of a measurement: which frame of the music the sink played when.
#pragma once

#include "Music.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

class GroundTruth {
public:
    /// Locates each frame of the log at @p sinkLogPath, see SinkLog.h, in @p music. Sound rendered
    /// at another rate is resampled first; the music must then have no content above 2 kHz.
    GroundTruth(const std::string& sinkLogPath, const Music& music);

    /// A stretch of the sink's time in which the music played, was silent, was not recognised, or
    /// which is missing from the log.
    struct Stretch {
        enum class Kind { Runs, Silent, Unknown, Unseen };
        Kind kind;
        std::int64_t sinkFrame; ///< at the music's rate
        std::int64_t count;
        std::int64_t musicFrame; ///< at its beginning; where it stopped, unless it runs
        double fraction;         ///< of a frame, to be added; 0 where nothing was resampled
    };
    const std::vector<Stretch>& Stretches() const { return stretches; }

    /// Whether the log covers the time before the first frame of the music.
    bool IsBeginningSeen() const;

    /// CLOCK_MONOTONIC of the first frame of the music; 0: none was heard.
    std::int64_t BeginNs() const;
    /// The same for the end of the last one.
    std::int64_t EndNs() const;

    /// CLOCK_MONOTONIC of a frame.
    std::int64_t NsOf(std::int64_t sinkFrame) const;

    struct Moment {
        Stretch::Kind kind;
        double musicMs;
    };
    /// What is heard at @p ns; before the first frame 0, after the last where it ended.
    Moment At(std::int64_t ns) const;

private:
    // Frames rendered together; `sinkFrame` is the number of the first.
    struct Block {
        std::int64_t heardNs;
        double sinkFrame;
    };

    // Frames rendered continuously at one rate, from `begin` to that of the next part.
    struct Part {
        std::int64_t begin;
        bool resampled;
    };

    void Read(const std::string& path);
    void MakeRoomAt(std::int64_t heardNs);
    void Append(const std::vector<Frame>& rendered, std::int64_t rate);
    bool IsResampled(std::int64_t sinkFrame) const;
    std::int64_t EndOfPart(std::int64_t sinkFrame) const;
    void Recognise(const Music& music);
    std::optional<Music::Place> FindPlace(const Music& music, std::int64_t sinkFrame,
                                          std::int64_t expected) const;
    void Cut(std::int64_t sinkFrame);
    std::int64_t PassUnknown(std::int64_t sinkFrame, std::int64_t musicFrame);
    std::int64_t PassUnseen(std::int64_t sinkFrame, std::int64_t musicFrame);
    std::int64_t PassSilence(std::int64_t sinkFrame, std::int64_t musicFrame);
    std::int64_t FollowMusic(const Music& music, std::int64_t sinkFrame, Music::Place& place);

    std::vector<Block> blocks;
    std::vector<Frame> frames; // NaN where the log has a gap
    std::vector<Part> parts;
    std::vector<Stretch> stretches;
};

} // namespace bench
