#include "Findings.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>

namespace bench {

using Kind = GroundTruth::Stretch::Kind;

static double MsOf(std::int64_t frames) {
    return static_cast<double>(frames) * 1000.0 / rateHz;
}

// The one that is further from 0.
static double Worse(double one, double other) {
    return std::fabs(other) > std::fabs(one) ? other : one;
}

void Errors::Add(const Errors& others) {
    values.insert(values.end(), others.values.begin(), others.values.end());
}

double Errors::Percentile(double share) const {
    if (values.empty()) {
        return std::nan("");
    }
    std::vector<double> sorted = values;
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(sorted.size() - 1));
    std::nth_element(sorted.begin(), sorted.begin() + place, sorted.end());
    return sorted[static_cast<std::size_t>(place)];
}

void Positions::Add(const GroundTruth& heard, const std::vector<Answer>& answers) {
    constexpr double beginningMs = 200.0;
    Errors errors;
    const Answer* last = nullptr;
    bool lastRan = false;
    for (const Answer& answer : answers) {
        const GroundTruth::Moment moment = heard.At(answer.ns);
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
    if (errors.Count() > 0) {
        worstMedian = Worse(worstMedian, errors.Percentile(0.5));
    }
    all.Add(errors);
    AddBeginning(heard);
}

double Positions::SamePercent() const {
    return pairs == 0 ? std::nan("") : 100.0 * same / pairs;
}

void Positions::AddBeginning(const GroundTruth& heard) {
    const auto& stretches = heard.Stretches();
    const auto first =
        std::find_if(stretches.begin(), stretches.end(),
                     [](const GroundTruth::Stretch& some) { return some.kind == Kind::Runs; });
    if (!heard.IsBeginningSeen()) {
        ++unseen;
    } else if (first != stretches.end()) {
        lost = std::max(lost, first->musicFrame);
    }
}

Events::Events(const std::string& path) {
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

std::int64_t Events::LatencyNs(std::int64_t ns) const {
    std::int64_t latencyNs = 0;
    for (const auto& [fromNs, howMuchNs] : latencies) {
        latencyNs = fromNs <= ns ? howMuchNs : latencyNs;
    }
    return latencyNs;
}

AnswersAfterChange FindAnswersAfterChange(const GroundTruth& heard,
                                          const std::vector<Answer>& answers,
                                          const Events& events) {
    constexpr std::int64_t settledNs = 2'000'000'000;
    constexpr double inStepMs = 1.0;
    constexpr int onEnd = 10;
    AnswersAfterChange found;
    int off = 0;
    const Answer* last = nullptr;
    for (const Answer& answer : answers) {
        const std::int64_t leftNs = answer.ns - events.LatencyNs(answer.ns);
        if (leftNs >= heard.EndNs()) {
            break;
        }
        found.backSteps += last != nullptr && answer.musicMs < last->musicMs ? 1 : 0;
        last = &answer;
        const GroundTruth::Moment moment = heard.At(leftNs);
        if (moment.kind != Kind::Runs || answer.ns < events.backNs) {
            continue;
        }
        const double error = answer.musicMs - moment.musicMs;
        off = std::fabs(error) > inStepMs ? off + 1 : 0;
        if (off >= onEnd) {
            found.offMs = static_cast<double>(answer.ns - events.backNs) / 1e6;
        }
        if (answer.ns >= events.backNs + settledNs) {
            found.settled.Add(error);
        }
    }
    return found;
}

SoundAfterChange FindSoundAfterChange(const GroundTruth& heard, const Events& events) {
    if (heard.EndNs() < events.backNs) { // nothing more
        constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
        return {unknown, unknown, unknown, unknown};
    }
    SoundAfterChange found = {};
    const GroundTruth::Stretch* last = nullptr;
    for (const GroundTruth::Stretch& stretch : heard.Stretches()) {
        if (stretch.kind != Kind::Runs) {
            continue;
        }
        const std::int64_t beginNs = heard.NsOf(stretch.sinkFrame);
        if (last != nullptr && beginNs >= events.changeNs) {
            const std::int64_t ended = last->sinkFrame + last->count;
            const std::int64_t jump = stretch.musicFrame - last->musicFrame - last->count;
            found.missing += MsOf(std::max<std::int64_t>(jump, 0));
            found.repeated += MsOf(std::max<std::int64_t>(-jump, 0));
            if (stretch.sinkFrame > ended) {
                found.silent += static_cast<double>(beginNs - heard.NsOf(ended)) / 1e6;
                found.resumed = std::max(static_cast<double>(beginNs - events.backNs) / 1e6, 0.0);
            }
        }
        last = &stretch;
    }
    return found;
}

// Up to the silence at its end: a show that leaves then has dropped nothing.
static std::int64_t AudibleFrames(const Music& music) {
    constexpr float inaudible = 0.002F;
    const auto frames = music.Frames();
    const auto last = std::find_if(frames.rbegin(), frames.rend(), [](Frame frame) {
        return std::fabs(frame.left) > inaudible || std::fabs(frame.right) > inaudible;
    });
    return frames.rend() - last;
}

Dropouts FindDropouts(const GroundTruth& heard, const Music& music) {
    int dropouts = 0;
    std::int64_t silent = 0;
    std::int64_t pending = 0;
    std::int64_t unseen = 0;
    std::int64_t lastFrame = 0;
    for (const GroundTruth::Stretch& stretch : heard.Stretches()) {
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
    return {dropouts, MsOf(silent), MsOf(lastFrame)};
}

} // namespace bench
