// Holds what players answered, and what the sink let be heard, to the music.
//   truth position MUSIC SINKLOG ANSWERS [SINKLOG ANSWERS]...
//                                         how far off the answers of one or more starts were
//   truth change MUSIC SINKLOG ANSWERS EVENTS
//                                         what became of sound and answers when something changed
//   truth dropouts MUSIC SINKLOG          where the music broke off
//   truth now                             the time, for EVENTS
// Prints one line of NAME=VALUE pairs, see Findings.h.
#include "Answers.h"
#include "Clock.h"
#include "Findings.h"
#include "GroundTruth.h"

#include <cstdio>
#include <string_view>

using bench::GroundTruth;

static void Print(const bench::Errors& errors) {
    std::printf("answers=%zu median=%+.3f p1=%+.3f p99=%+.3f least=%+.3f most=%+.3f ",
                errors.Count(), errors.Percentile(0.5), errors.Percentile(0.01),
                errors.Percentile(0.99), errors.Percentile(0.0), errors.Percentile(1.0));
}

static int ComparePositions(const bench::Music& music, int count, char** files) {
    bench::Positions positions;
    for (int i = 0; i < count; i += 2) {
        positions.Add(GroundTruth(files[i], music), bench::ReadAnswers(files[i + 1]));
    }
    Print(positions.All());
    std::printf("worst=%+.3f back=%d same=%.3f worstMedian=%+.3f beginning=%+.3f lost=%lld "
                "unseen=%d\n",
                positions.Worst(), positions.BackSteps(), positions.SamePercent(),
                positions.WorstMedian(), positions.WorstOfBeginning(),
                static_cast<long long>(positions.LostFrames()), positions.UnseenStarts());
    return 0;
}

static int CompareChange(const bench::Music& music, char** files) {
    const GroundTruth heard(files[0], music);
    const bench::Events events(files[2]);
    const auto answers = bench::FindAnswersAfterChange(heard, bench::ReadAnswers(files[1]), events);
    const auto sound = bench::FindSoundAfterChange(heard, events);
    Print(answers.settled);
    std::printf("off=%.0f back=%d missing=%.1f repeated=%.1f silent=%.1f resumed=%.0f\n",
                answers.offMs, answers.backSteps, sound.missing, sound.repeated, sound.silent,
                sound.resumed);
    return 0;
}

static int CountDropouts(const bench::Music& music, const char* sinkLog) {
    const bench::Dropouts dropouts = bench::FindDropouts(GroundTruth(sinkLog, music), music);
    std::printf("dropouts=%d lost=%.1f heard=%.1f\n", dropouts.count, dropouts.lostMs,
                dropouts.heardMs);
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
        return CountDropouts(bench::Music(argv[2]), argv[3]);
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
