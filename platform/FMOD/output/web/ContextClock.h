// Which frame of an audio context is heard when, from what the browser reports.
#pragma once

#include "PlayHead.h"

#include <cstdint>
#include <limits>

struct SkovraAudioReport;

namespace sound {

inline constexpr std::int64_t millisecondNs = 1'000'000;

/// Frames of the context are counted from its beginning, at the output's rate; times are in ns of
/// performance.now().
class ContextClock {
public:
    /// While the context runs, often; what is no news is ignored.
    void Add(const SkovraAudioReport& report);

    /// After an interruption: nothing is known any more.
    void Forget();

    /// Whether reports have agreed with each other since the beginning, or the interruption.
    bool IsKnown() const { return known; }

    /// Whether the context has stopped although it says that it runs.
    bool IsStuck() const { return stuck; }

    /// The frame heard at @p ns; only while known.
    std::int64_t HeardAt(std::int64_t ns) const { return head.Extrapolate(ns); }

    /// The frame up to which the context may have rendered by @p ns, later than the latest report:
    /// its own answer stands still for a while, then jumps.
    std::int64_t RenderedBy(std::int64_t ns) const;

private:
    void AddHeard(std::int64_t frames, std::int64_t ns);
    void Correct(std::int64_t frames, std::int64_t ns);
    bool IsConfirmed(std::int64_t begin, std::int64_t ns);
    void WatchProgress(std::int64_t rendered, std::int64_t ns);

    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::min();

    PlayHead head;
    bool known = false;
    bool stuck = false;
    std::int64_t stampNs = never;    // of the latest stamp
    std::int64_t beginNs = never;    // when frame 0 was heard, by that stamp
    std::int64_t knownNs = 0;        // since when the clock is known
    std::int64_t farBeginNs = never; // on which stamps that contradict the clock agree,
    std::int64_t farSinceNs = 0;     // and since when
    std::int64_t reportNs = never;   // of the latest report
    std::int64_t renderedNs = 0;     // when frame 0 was rendered, at the earliest
    std::int64_t rendered = never;   // by the latest report,
    std::int64_t progressNs = 0;     // since when,
    int standstills = 0;             // and for how many reports
};

} // namespace sound
