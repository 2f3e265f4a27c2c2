// What is found when the answers of players, and what was heard, are held to the music.
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

/// How far off answers were, in ms; above 0: ahead of what was heard.
class Errors {
public:
    void Add(double ms) { values.push_back(ms); }
    void Add(const Errors& others);

    std::size_t Count() const { return values.size(); }

    /// Not a number when there are none. 0.5 is the median, 0 the least, 1 the most.
    double Percentile(double share) const;

private:
    std::vector<double> values;
};

/// The answers of one or more starts.
class Positions {
public:
    /// One start more, up to the last frame heard, where the truth is known.
    void Add(const GroundTruth& heard, const std::vector<Answer>& answers);

    const Errors& All() const { return all; }
    /// Of all, pauses and what came before the music included: the error furthest from 0.
    double Worst() const { return worst; }
    /// The same of the music's first 200 ms.
    double WorstOfBeginning() const { return worstOfBeginning; }
    /// The median furthest from 0 that a start had.
    double WorstMedian() const { return worstMedian; }
    /// The most frames of the beginning that a start did not let be heard.
    std::int64_t LostFrames() const { return lost; }
    /// Starts whose beginning the log does not show.
    int UnseenStarts() const { return unseen; }
    /// Answers less than the one before.
    int BackSteps() const { return back; }
    /// Of the answers a millisecond after the one before: how many were the same, in percent.
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

/// Moments in ns of CLOCK_MONOTONIC, read from a file with a line for each: "change NS", from when
/// on something was wrong or another, "back NS", from when on the server was there again, and
/// "latency NS MS", from when on what leaves the player is heard that much later.
struct Events {
    explicit Events(const std::string& path);

    std::int64_t LatencyNs(std::int64_t ns) const;

    std::int64_t changeNs = 0;
    std::int64_t backNs = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> latencies; // from when on, how much; ns
};

/// What became of answers after a change.
struct AnswersAfterChange {
    Errors settled;   ///< from 2 s after the server was back
    double offMs = 0; ///< until when, from then on, ten on end were off by more than 1 ms
    int backSteps = 0;
};
AnswersAfterChange FindAnswersAfterChange(const GroundTruth& heard,
                                          const std::vector<Answer>& answers, const Events& events);

/// What became of the sound. All in ms; not a number when nothing more was heard.
struct SoundAfterChange {
    double missing;  ///< of the music
    double repeated; ///< of the music
    double silent;   ///< between two stretches of the music
    double resumed;  ///< after the server was back, the last time that the music went on
};
SoundAfterChange FindSoundAfterChange(const GroundTruth& heard, const Events& events);

/// Where the music did not run on, or ended too early, or was not heard at all. Where the log says
/// nothing, and the music ran on, there was none. Resampled frames are counted to one or two.
struct Dropouts {
    int count;
    double lostMs;  ///< silence instead of music
    double heardMs; ///< where the music ended
};
Dropouts FindDropouts(const GroundTruth& heard, const Music& music);

} // namespace bench
