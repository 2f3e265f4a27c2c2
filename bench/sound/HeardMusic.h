// Which frame of the music a sink let be heard when: the truth that positions are held to.
#pragma once

#include "Music.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

class HeardMusic {
public:
    /// Finds each frame of the log at @p sinkLogPath, see SinkLog.cpp, in @p music.
    HeardMusic(const std::string& sinkLogPath, const Music& music);

    /// A stretch of the sink's time in which the music ran on, stood still, or was not recognised.
    struct Stretch {
        enum class Kind { Runs, Silent, Unknown };
        Kind kind;
        std::int64_t sinkFrame;
        std::int64_t count;
        std::int64_t musicFrame; ///< at its beginning; where it stopped, unless it runs
    };
    const std::vector<Stretch>& Stretches() const { return stretches; }

    /// CLOCK_MONOTONIC of the first frame of the music heard; 0: none was.
    std::int64_t BeginNs() const;
    /// The same of the moment after the last.
    std::int64_t EndNs() const;

    struct Moment {
        Stretch::Kind kind;
        double musicMs;
    };
    /// What is heard at @p ns; before the first frame 0, after the last where it ended.
    Moment At(std::int64_t ns) const;

private:
    // Frames of the sink that were rendered as one, `sinkFrame` the number of the first.
    struct Block {
        std::int64_t heardNs;
        std::int64_t sinkFrame;
    };

    void Read(const std::string& path);
    void Recognise(const Music& music);
    std::int64_t NsOf(std::int64_t sinkFrame) const;
    std::optional<std::int64_t> FindPlace(const Music& music, std::int64_t sinkFrame,
                                          std::int64_t expected) const;
    void Cut(std::int64_t sinkFrame);
    std::int64_t PassUnknown(std::int64_t sinkFrame, std::int64_t musicFrame);
    std::int64_t PassSilence(std::int64_t sinkFrame, std::int64_t musicFrame);
    std::int64_t FollowMusic(const Music& music, std::int64_t sinkFrame, std::int64_t& musicFrame);

    std::vector<Block> blocks;
    std::vector<Frame> frames;
    std::vector<Stretch> stretches;
};

} // namespace bench
