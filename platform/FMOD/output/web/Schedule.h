// Which frame of the output's timeline is at which frame of the audio context.
#pragma once

#include <cstdint>
#include <deque>

namespace sound {

/// The timeline's frames follow each other in the context without a gap, in runs. Between two runs
/// there is silence, in which the timeline halts.
class Schedule {
public:
    /// Drops what is scheduled; the next run begins with the timeline's frame @p timelineFrame.
    void Clear(std::int64_t timelineFrame);

    /// The next frame is at @p contextFrame, not before End().
    void BeginRun(std::int64_t contextFrame);

    /// @p frames more follow.
    void Extend(std::int64_t frames);

    /// Moves the latest run, as a whole, to @p contextFrame.
    void MoveRun(std::int64_t contextFrame);

    /// Whether the latest run has no frames yet.
    bool IsRunEmpty() const { return !runs.empty() && runs.back().frames == 0; }

    /// The context's frame after the latest run; 0 if there is none.
    std::int64_t End() const;

    /// The timeline's frame heard with @p contextFrame: counting up to the first run's beginning.
    std::int64_t At(std::int64_t contextFrame) const;

    /// Forgets runs that end before @p contextFrame.
    void ForgetBefore(std::int64_t contextFrame);

private:
    struct Run {
        std::int64_t contextFrame;
        std::int64_t timelineFrame;
        std::int64_t frames;
    };

    std::deque<Run> runs;
    std::int64_t next = 0; // of the timeline
};

} // namespace sound
