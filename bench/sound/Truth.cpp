// Holds what players answered, and what the sink let be heard, to the music.
//   truth position SINKLOG MUSIC ANSWERS   how far off the answers were
//   truth dropouts SINKLOG MUSIC           where the music broke off
// Prints one line of NAME=VALUE pairs.
#include "Answers.h"
#include "HeardMusic.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

using bench::Answer;
using bench::HeardMusic;
using Kind = HeardMusic::Stretch::Kind;

static double Percentile(const std::vector<double>& sorted, double share) {
    return sorted.empty()
               ? std::nan("")
               : sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

// Up to the last frame heard, or to where the truth is not known.
static int ComparePositions(const HeardMusic& heard, const std::vector<Answer>& answers) {
    std::vector<double> errors;
    double worst = 0.0; // pauses and the beginning included
    int back = 0;
    int pairs = 0;
    int same = 0;
    const Answer* last = nullptr;
    bool lastRan = false;
    for (const Answer& answer : answers) {
        const HeardMusic::Moment moment = heard.At(answer.ns);
        if (answer.ns >= heard.EndNs() || moment.kind == Kind::Unknown) {
            break;
        }
        const bool runs = moment.kind == Kind::Runs;
        const double error = answer.musicMs - moment.musicMs;
        worst = std::fabs(error) > std::fabs(worst) ? error : worst;
        if (runs) {
            errors.push_back(error);
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
    std::sort(errors.begin(), errors.end());
    std::printf("answers=%zu median=%+.3f p1=%+.3f p99=%+.3f least=%+.3f most=%+.3f worst=%+.3f "
                "back=%d same=%.3f\n",
                errors.size(), Percentile(errors, 0.5), Percentile(errors, 0.01),
                Percentile(errors, 0.99), Percentile(errors, 0.0), Percentile(errors, 1.0), worst,
                back, pairs == 0 ? std::nan("") : 100.0 * same / pairs);
    return 0;
}

// A dropout: the music did not run on, or ended too early, or was not heard at all.
static int CountDropouts(const HeardMusic& heard, const bench::Music& music) {
    int dropouts = 0;
    std::int64_t silent = 0;
    std::int64_t pending = 0;
    std::int64_t lastFrame = 0;
    for (const HeardMusic::Stretch& stretch : heard.Stretches()) {
        if (stretch.kind != Kind::Runs) {
            pending += stretch.count;
            continue;
        }
        if (stretch.musicFrame != lastFrame || (lastFrame > 0 && pending > 0)) {
            ++dropouts;
            silent += lastFrame > 0 ? pending : stretch.musicFrame;
        }
        pending = 0;
        lastFrame = stretch.musicFrame + stretch.count;
    }
    const std::int64_t missing = std::ssize(music.Frames()) - lastFrame;
    dropouts += missing > 0 ? 1 : 0;
    silent += missing;
    std::printf("dropouts=%d lost=%.1f heard=%.1f music=%.1f\n", dropouts,
                static_cast<double>(silent) * 1000.0 / bench::rateHz,
                static_cast<double>(lastFrame) * 1000.0 / bench::rateHz,
                static_cast<double>(music.Frames().size()) * 1000.0 / bench::rateHz);
    return 0;
}

int main(int argc, char** argv) {
    const std::string_view mode = argc > 3 ? argv[1] : "";
    if (mode == "position" && argc == 5) {
        const bench::Music music(argv[3]);
        return ComparePositions(HeardMusic(argv[2], music), bench::ReadAnswers(argv[4]));
    }
    if (mode == "dropouts" && argc == 4) {
        const bench::Music music(argv[3]);
        return CountDropouts(HeardMusic(argv[2], music), music);
    }
    std::fputs("usage: truth position SINKLOG MUSIC ANSWERS, truth dropouts SINKLOG MUSIC\n",
               stderr);
    return 2;
}
