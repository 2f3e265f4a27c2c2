#include "ContextClock.h"

#include "BrowserAudio.h"
#include "Output.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace sound {

// Stamps are rough until the first sound can have been heard.
static constexpr double leastStampTime = 0.01;

// Further from each other, two stamps contradict each other, or the clock; further from now or from
// what was rendered, one is wrong.
static constexpr std::int64_t agreementNs = 10 * millisecondNs;
static constexpr double longestLatency = 1.0;

// Stamps that contradict the clock are believed once they have agreed with each other for so long:
// beside busy processes a browser's estimate is tens of ms off, for seconds, and drifts, while its
// sound plays undisturbed.
static constexpr std::int64_t confirmationNs = 1000 * millisecondNs;
static constexpr std::int64_t confirmedNs = 5 * millisecondNs;

// So long each stamp is believed at once; then, while browser and sound server still learn their
// latency, by a part.
static constexpr std::int64_t roughNs = 1000 * millisecondNs;
static constexpr std::int64_t learningNs = 10'000 * millisecondNs;
static constexpr std::int64_t learningPart = 8;

// After a longer pause the page's own view of the context may be old.
static constexpr std::int64_t longestPauseNs = 100 * millisecondNs;

// A context that has rendered nothing for so long, and so many reports, has lost its device.
static constexpr std::int64_t standstillNs = 500 * millisecondNs;
static constexpr int mostStandstills = 4;

// The estimate of when rendering began is relaxed by this part of the time that passes: clocks
// differ.
static constexpr std::int64_t forgottenPart = 1000;

static std::int64_t Ns(double ms) {
    return std::llround(ms * 1e6);
}

static std::int64_t Frames(double seconds) {
    return std::llround(seconds * static_cast<double>(outputRateHz));
}

// Whether the browser has made the stamp up from its estimate of the latency, which it has taken
// from both of its times.
static bool IsDerived(const SkovraAudioReport& report) {
    constexpr double toleranceMs = 1.5; // some browsers round their times to 1 ms
    return std::fabs(report.currentTime - report.latency - report.stampTime) < 0.00005 &&
           std::fabs(report.nowMs - report.latency * 1000.0 - report.stampMs) < toleranceMs;
}

static bool IsPlausible(const SkovraAudioReport& report) {
    const double ageSeconds = (report.nowMs - report.stampMs) / 1000.0;
    return report.stampMs > 0.0 && report.stampTime <= report.currentTime &&
           report.stampTime >= report.currentTime - longestLatency &&
           std::fabs(ageSeconds) <= longestLatency && !IsDerived(report);
}

void ContextClock::Add(const SkovraAudioReport& report) {
    const std::int64_t nowNs = Ns(report.nowMs);
    const bool late = reportNs == never || nowNs - reportNs > longestPauseNs;
    WatchProgress(Frames(report.currentTime), nowNs);
    reportNs = nowNs;
    if (stuck) {
        return;
    }
    if (IsPlausible(report)) {
        if (report.stampTime >= leastStampTime) {
            AddHeard(Frames(report.stampTime), Ns(report.stampMs));
        }
    } else if (report.latency > 0.0 && !late && standstills == 0 &&
               report.currentTime > report.latency) {
        // Without any latency the context renders for no device, or not yet.
        AddHeard(Frames(report.currentTime - report.latency), nowNs);
    }
}

void ContextClock::Forget() {
    known = false;
    stuck = false;
    stampNs = never;
    beginNs = never;
    farBeginNs = never;
    reportNs = never;
    rendered = never;
    standstills = 0;
}

void ContextClock::AddHeard(std::int64_t frames, std::int64_t ns) {
    if (ns <= stampNs) {
        return;
    }
    const std::int64_t begin = ns - NsUntil(frames);
    const bool agrees = beginNs != never && std::abs(begin - beginNs) <= agreementNs;
    stampNs = ns;
    beginNs = begin;
    if (!known && agrees) {
        known = true;
        knownNs = ns;
        head.Publish(frames, ns);
    } else if (known && ns - knownNs < roughNs) {
        if (agrees) {
            head.Publish(frames, ns);
        }
    } else if (known && NsUntil(std::abs(frames - head.Extrapolate(ns))) <= agreementNs) {
        farBeginNs = never;
        Correct(frames, ns);
    } else if (known && IsConfirmed(begin, ns)) {
        head.Publish(frames, ns);
    }
}

void ContextClock::Correct(std::int64_t frames, std::int64_t ns) {
    if (ns - knownNs < learningNs) {
        const std::int64_t heard = head.Extrapolate(ns);
        head.Publish(heard + (frames - heard) / learningPart, ns);
    } else {
        head.Follow(frames, ns);
    }
}

bool ContextClock::IsConfirmed(std::int64_t begin, std::int64_t ns) {
    if (farBeginNs == never || std::abs(begin - farBeginNs) > confirmedNs) {
        farBeginNs = begin;
        farSinceNs = ns;
    }
    return ns - farSinceNs >= confirmationNs;
}

void ContextClock::WatchProgress(std::int64_t now, std::int64_t ns) {
    const std::int64_t begin = ns - NsUntil(now);
    if (rendered == never) {
        renderedNs = begin;
    } else {
        renderedNs = std::min(renderedNs + (ns - reportNs) / forgottenPart, begin);
    }
    if (now != rendered) {
        rendered = now;
        progressNs = ns;
        standstills = 0;
        stuck = false;
    } else if (++standstills >= mostStandstills && ns - progressNs >= standstillNs) {
        stuck = true;
        known = false;
        beginNs = never;
    }
}

std::int64_t ContextClock::RenderedBy(std::int64_t ns) const {
    return FramesIn(ns - renderedNs) + 1;
}

} // namespace sound
