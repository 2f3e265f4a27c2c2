// Holds what players answered, and what the sink let be heard, to the music.
//   truth position MUSIC SINKLOG ANSWERS [SINKLOG ANSWERS]...
//                                         how far off the answers of one or more starts were
//   truth change MUSIC SINKLOG ANSWERS EVENTS
//                                         what became of sound and answers when something changed
//   truth dropouts MUSIC SINKLOG          where the music broke off
//   truth now                             the time, for EVENTS
// Prints one line of NAME=VALUE pairs. EVENTS has a line for each moment in ns of CLOCK_MONOTONIC:
// "change NS", from when on something was wrong or another, "back NS", from when on the server was
// there again, and "latency NS MS", from when on what leaves the player is heard that much later.
#include "Answers.h"
#include "Clock.h"
#include "HeardMusic.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

using bench::Answer;
using bench::HeardMusic;
using Kind = HeardMusic::Stretch::Kind;

static double MsOf(std::int64_t frames) {
    return static_cast<double>(frames) * 1000.0 / bench::rateHz;
}

// The one that is further from 0.
static double Worse(double one, double other) {
    return std::fabs(other) > std::fabs(one) ? other : one;
}

namespace {

class Errors {
public:
    void Add(double ms) { values.push_back(ms); }
    void Add(const Errors& others) {
        values.insert(values.end(), others.values.begin(), others.values.end());
    }

    double Percentile(double share) {
        std::sort(values.begin(), values.end());
        return values.empty() ? std::nan("")
                              : values[static_cast<std::size_t>(
                                    share * static_cast<double>(values.size() - 1))];
    }

    void Print() {
        std::printf("answers=%zu median=%+.3f p1=%+.3f p99=%+.3f least=%+.3f most=%+.3f ",
                    values.size(), Percentile(0.5), Percentile(0.01), Percentile(0.99),
                    Percentile(0.0), Percentile(1.0));
    }

private:
    std::vector<double> values;
};

// Of all starts together.
class Positions {
public:
    // Up to the last frame heard, where the truth is known.
    void Compare(const HeardMusic& heard, const std::vector<Answer>& answers) {
        Errors errors;
        const Answer* last = nullptr;
        bool lastRan = false;
        for (const Answer& answer : answers) {
            const HeardMusic::Moment moment = heard.At(answer.ns);
            if (answer.ns >= heard.EndNs()) {
                break;
            }
            const bool known = moment.kind == Kind::Runs || moment.kind == Kind::Silent;
            const bool runs = moment.kind == Kind::Runs;
            const double error = answer.musicMs - moment.musicMs;
            if (known) {
                worst = Worse(worst, error);
            }
            if (runs) {
                errors.Add(error);
            }
            if (runs && moment.musicMs < beginningMs) {
                worstOfBeginning = Worse(worstOfBeginning, error);
            }
            if (last != nullptr) {
                const std::int64_t apartNs = answer.ns - last->ns;
                const bool apart = apartNs > 700'000 && apartNs < 1'300'000;
                back += answer.musicMs < last->musicMs ? 1 : 0;
                pairs += runs && lastRan && apart ? 1 : 0;
                same += runs && lastRan && apart && answer.musicMs == last->musicMs ? 1 : 0;
            }
            last = &answer;
            lastRan = runs;
        }
        worstMedian = Worse(worstMedian, errors.Percentile(0.5));
        all.Add(errors);
        CompareBeginning(heard);
    }

    void Print() {
        all.Print();
        std::printf("worst=%+.3f back=%d same=%.3f worstMedian=%+.3f beginning=%+.3f lost=%lld "
                    "unseen=%d\n",
                    worst, back, pairs == 0 ? std::nan("") : 100.0 * same / pairs, worstMedian,
                    worstOfBeginning, static_cast<long long>(lost), unseen);
    }

private:
    static constexpr double beginningMs = 200.0;

    void CompareBeginning(const HeardMusic& heard) {
        const auto& stretches = heard.Stretches();
        const auto first =
            std::find_if(stretches.begin(), stretches.end(),
                         [](const HeardMusic::Stretch& some) { return some.kind == Kind::Runs; });
        if (!heard.IsBeginningSeen()) {
            ++unseen;
        } else if (first != stretches.end()) {
            lost = std::max(lost, first->musicFrame);
        }
    }

    Errors all;
    double worst = 0.0; // pauses and the beginning included
    double worstMedian = 0.0;
    double worstOfBeginning = 0.0;
    std::int64_t lost = 0; // frames at the beginning
    int unseen = 0;        // starts whose beginning the log does not show
    int back = 0;
    int pairs = 0;
    int same = 0;
};

struct Events {
    std::int64_t changeNs = 0;
    std::int64_t backNs = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> latencies; // from when on, how much; ns

    explicit Events(const char* path) {
        std::ifstream file(path);
        std::string name;
        std::int64_t ns = 0;
        while (file >> name >> ns) {
            if (name == "change") {
                changeNs = ns;
            } else if (name == "back") {
                backNs = ns;
            } else if (double ms = 0.0; name == "latency" && file >> ms) {
                latencies.emplace_back(ns, std::llround(ms * 1e6));
            }
        }
    }

    std::int64_t LatencyNs(std::int64_t ns) const {
        std::int64_t latencyNs = 0;
        for (const auto& [fromNs, howMuchNs] : latencies) {
            latencyNs = fromNs <= ns ? howMuchNs : latencyNs;
        }
        return latencyNs;
    }
};

} // namespace

static int ComparePositions(const bench::Music& music, int count, char** files) {
    Positions positions;
    for (int i = 0; i < count; i += 2) {
        positions.Compare(HeardMusic(files[i], music), bench::ReadAnswers(files[i + 1]));
    }
    positions.Print();
    return 0;
}

// How far the answers were off from two seconds after the server was back, and when they last were
// by more than a millisecond, ten times on end.
static void CompareAfterChange(const HeardMusic& heard, const std::vector<Answer>& answers,
                               const Events& events) {
    constexpr std::int64_t settledNs = 2'000'000'000;
    constexpr double inStepMs = 1.0;
    constexpr int onEnd = 10;
    Errors errors;
    double lastOffMs = 0.0;
    int off = 0;
    int back = 0;
    const Answer* last = nullptr;
    for (const Answer& answer : answers) {
        const std::int64_t leftNs = answer.ns - events.LatencyNs(answer.ns);
        if (leftNs >= heard.EndNs()) {
            break;
        }
        back += last != nullptr && answer.musicMs < last->musicMs ? 1 : 0;
        last = &answer;
        const HeardMusic::Moment moment = heard.At(leftNs);
        if (moment.kind != Kind::Runs || answer.ns < events.backNs) {
            continue;
        }
        const double error = answer.musicMs - moment.musicMs;
        off = std::fabs(error) > inStepMs ? off + 1 : 0;
        if (off >= onEnd) {
            lastOffMs = static_cast<double>(answer.ns - events.backNs) / 1e6;
        }
        if (answer.ns >= events.backNs + settledNs) {
            errors.Add(error);
        }
    }
    errors.Print();
    std::printf("off=%.0f back=%d ", lastOffMs, back);
}

// What of the music was not heard from the change on, for how long nothing was, and until when.
static void CompareSound(const HeardMusic& heard, const Events& events) {
    if (heard.EndNs() < events.backNs) { // nothing more
        std::puts("missing=nan repeated=nan silent=nan resumed=nan");
        return;
    }
    std::int64_t missing = 0;
    std::int64_t repeated = 0;
    double silentMs = 0.0;
    double resumedMs = 0.0;
    const HeardMusic::Stretch* last = nullptr;
    for (const HeardMusic::Stretch& stretch : heard.Stretches()) {
        if (stretch.kind != Kind::Runs) {
            continue;
        }
        const std::int64_t beginNs = heard.NsOf(stretch.sinkFrame);
        if (last != nullptr && beginNs >= events.changeNs) {
            const std::int64_t ended = last->sinkFrame + last->count;
            const std::int64_t jump = stretch.musicFrame - last->musicFrame - last->count;
            missing += std::max<std::int64_t>(jump, 0);
            repeated += std::max<std::int64_t>(-jump, 0);
            if (stretch.sinkFrame > ended) {
                silentMs += static_cast<double>(beginNs - heard.NsOf(ended)) / 1e6;
                resumedMs = static_cast<double>(beginNs - events.backNs) / 1e6;
            }
        }
        last = &stretch;
    }
    std::printf("missing=%.1f repeated=%.1f silent=%.1f resumed=%.0f\n", MsOf(missing),
                MsOf(repeated), silentMs, std::max(resumedMs, 0.0));
}

static int CompareChange(const bench::Music& music, char** files) {
    const HeardMusic heard(files[0], music);
    const Events events(files[2]);
    CompareAfterChange(heard, bench::ReadAnswers(files[1]), events);
    CompareSound(heard, events);
    return 0;
}

// Up to the silence at its end: a show that leaves then has dropped nothing.
static std::int64_t AudibleFrames(const bench::Music& music) {
    constexpr float inaudible = 0.002F;
    const auto frames = music.Frames();
    const auto last = std::find_if(frames.rbegin(), frames.rend(), [](bench::Frame frame) {
        return std::fabs(frame.left) > inaudible || std::fabs(frame.right) > inaudible;
    });
    return frames.rend() - last;
}

// A dropout: the music did not run on, or ended too early, or was not heard at all. Where the log
// says nothing, and the music ran on, there was none. Resampled frames are counted to one or two.
static int CountDropouts(const HeardMusic& heard, const bench::Music& music) {
    int dropouts = 0;
    std::int64_t silent = 0;
    std::int64_t pending = 0;
    std::int64_t unseen = 0;
    std::int64_t lastFrame = 0;
    for (const HeardMusic::Stretch& stretch : heard.Stretches()) {
        if (stretch.kind == Kind::Unseen) {
            unseen += stretch.count;
        } else if (stretch.kind != Kind::Runs) {
            pending += stretch.count;
        }
        if (stretch.kind != Kind::Runs) {
            continue;
        }
        const bool runsOn = std::abs(stretch.musicFrame - lastFrame - unseen) <= 2;
        if (!runsOn || (lastFrame > 0 && pending > 0)) {
            ++dropouts;
            silent += lastFrame > 0 ? pending + unseen : stretch.musicFrame;
        }
        pending = 0;
        unseen = 0;
        lastFrame = stretch.musicFrame + stretch.count;
    }
    const std::int64_t missing = std::max<std::int64_t>(AudibleFrames(music) - lastFrame, 0);
    dropouts += missing > 0 ? 1 : 0;
    silent += missing;
    std::printf("dropouts=%d lost=%.1f heard=%.1f music=%.1f\n", dropouts, MsOf(silent),
                MsOf(lastFrame), MsOf(std::ssize(music.Frames())));
    return 0;
}

int main(int argc, char** argv) {
    const std::string_view mode = argc > 3 ? argv[1] : "";
    if (mode == "position" && argc >= 5 && argc % 2 == 1) {
        return ComparePositions(bench::Music(argv[2]), argc - 3, argv + 3);
    }
    if (mode == "change" && argc == 6) {
        return CompareChange(bench::Music(argv[2]), argv + 3);
    }
    if (mode == "dropouts" && argc == 4) {
        const bench::Music music(argv[2]);
        return CountDropouts(HeardMusic(argv[3], music), music);
    }
    if (argc == 2 && std::string_view(argv[1]) == "now") {
        std::printf("%lld\n", static_cast<long long>(sound::MonotonicNs()));
        return 0;
    }
    std::fputs("usage: truth position MUSIC SINKLOG ANSWERS [SINKLOG ANSWERS]...\n"
               "       truth change MUSIC SINKLOG ANSWERS EVENTS\n"
               "       truth dropouts MUSIC SINKLOG\n"
               "       truth now\n",
               stderr);
    return 2;
}
