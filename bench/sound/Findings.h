// Statistics of the positions that players returned, and of dropouts.
#pragma once

#include "Answers.h"
#include "GroundTruth.h"
#include "Music.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// Errors of positions, in ms; above 0: ahead of the sound heard.
class Errors {
public:
    void Add(double ms) { values.push_back(ms); }
    void Add(const Errors& others);

    std::size_t Count() const { return values.size(); }

    /// NaN if there are none. 0.5 is the median, 0 the minimum, 1 the maximum.
    double Percentile(double share) const;

private:
    std::vector<double> values;
};

/// The positions from one or more starts.
class Positions {
public:
    /// Adds a start, up to the last frame heard, where the ground truth is known.
    void Add(const GroundTruth& heard, const std::vector<Answer>& answers);

    const Errors& All() const { return all; }
    /// The largest error of all, including pauses and the time before the music.
    double Worst() const { return worst; }
    /// The same of the music's first 200 ms.
    double WorstOfBeginning() const { return worstOfBeginning; }
    /// The largest median error of a start.
    double WorstMedian() const { return worstMedian; }
    /// The most frames lost at the beginning of a start.
    std::int64_t LostFrames() const { return lost; }
    /// Starts whose beginning is not in the log.
    int UnseenStarts() const { return unseen; }
    /// Positions less than the previous one.
    int BackSteps() const { return back; }
    /// The percentage of positions equal to the one a millisecond before.
    double SamePercent() const;

private:
    void AddBeginning(const GroundTruth& heard);

    Errors all;
    double worst = 0.0;
    double worstOfBeginning = 0.0;
    double worstMedian = 0.0;
    std::int64_t lost = 0;
    int unseen = 0;
    int back = 0;
    int pairs = 0;
    int same = 0;
};

/// Times in ns of CLOCK_MONOTONIC, read from a file with a line for each: "change NS", when the
/// change or fault began, "back NS", when the server was back, and "latency NS MS", from when on
/// the player's sound is heard with that latency.
struct Events {
    explicit Events(const std::string& path);

    std::int64_t LatencyNs(std::int64_t ns) const;

    std::int64_t changeNs = 0;
    std::int64_t backNs = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> latencies; // from when on, how much; ns
};

/// Positions after a change.
struct AnswersAfterChange {
    Errors settled;   ///< from 2 s after the server was back on
    double offMs = 0; ///< from then to the last time that ten in a row were off by more than 1 ms
    int backSteps = 0;
};
AnswersAfterChange FindAnswersAfterChange(const GroundTruth& heard,
                                          const std::vector<Answer>& answers, const Events& events);

/// The sound after a change. All in ms; NaN if nothing more was heard.
struct SoundAfterChange {
    double missing;  ///< of the music
    double repeated; ///< of the music
    double silent;   ///< between two stretches of the music
    double resumed;  ///< from the server being back to the last resumption of the music
};
SoundAfterChange FindSoundAfterChange(const GroundTruth& heard, const Events& events);

/// Discontinuities in the music, including a premature end or no music at all. A gap in the log
/// across which the music continued is none. Resampled frames are counted to within one or two.
struct Dropouts {
    int count;
    double lostMs;  ///< silence instead of music
    double heardMs; ///< where the music ended
};
Dropouts FindDropouts(const GroundTruth& heard, const Music& music);

} // namespace bench
