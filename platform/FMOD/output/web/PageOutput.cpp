#include "PageOutput.h"

#include "BrowserAudio.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace sound {

// Of a device's buffer: less, and busy processes make it crackle.
static constexpr double latencySeconds = 0.1;

// What is scheduled at least after each turn: the page's thread may be busy for that long.
static constexpr std::int64_t aheadFrames = outputRateHz * 11 / 20;

// From choosing the time of the first chunk to handing it over; and less than that is too late for
// a further one.
static constexpr std::int64_t leadFrames = outputRateHz / 20;
static constexpr std::int64_t lateFrames = outputRateHz / 200;
static constexpr int mostAttempts = 3;

// How long a context may take from the viewer's gesture to a known clock, before there is anything
// to draw.
static constexpr std::int64_t longestStartNs = 1000 * millisecondNs;

// A page that was asleep for longer before anything was played goes on from where it was.
static constexpr std::int64_t longestUnheard = 10 * outputRateHz;

static constexpr std::int64_t retryNs = 1000 * millisecondNs;

// How long nothing may sound before the viewer is told.
static constexpr std::int64_t patienceNs = 2000 * millisecondNs;

static double SecondsOf(std::int64_t contextFrame) {
    return static_cast<double>(contextFrame) / static_cast<double>(outputRateHz);
}

static std::int64_t NowNs() {
    return std::llround(SkovraAudioNow() * 1e6);
}

PageOutput::PageOutput(const Source& played)
    : source(played), openedNs(NowNs()), beginNs(openedNs) {
    SkovraAudioOpen(static_cast<double>(outputRateHz), latencySeconds);
}

PageOutput::~PageOutput() {
    SkovraAudioClose();
}

void PageOutput::Turn() {
    Listen();
    const std::int64_t nowNs = NowNs();
    if (sounding && !clock.IsKnown()) {
        FallSilent(nowNs);
    } else if (!sounding && wanted && clock.IsKnown()) {
        TakeOver(nowNs);
    }
    if (sounding) {
        Fill(nowNs);
    } else {
        if (holding && nowNs >= holdUntilNs) {
            Resume(nowNs);
        }
        AdvanceSilence(nowNs);
    }
    Notify(nowNs);
}

void PageOutput::Listen() {
    SkovraAudioReport report = {};
    SkovraAudioRead(&report);
    const auto nowNs = std::llround(report.nowMs * 1e6);
    state = report.state;
    if (state == audioRunning) {
        clock.Add(report);
    } else {
        clock.Forget();
    }
    if (state == audioNone && nowNs - openedNs >= retryNs) {
        openedNs = nowNs;
        SkovraAudioOpen(static_cast<double>(outputRateHz), latencySeconds);
    }
}

void PageOutput::Await() {
    Listen();
    const std::int64_t nowNs = NowNs();
    AdvanceSilence(nowNs);
    if (!wanted) {
        wanted = true;
        silentNs = nowNs;
    }
    if (!sounding && (state == audioStarting || state == audioRunning)) {
        Hold(nowNs);
    }
}

// Until the context plays, so that the beginning is heard.
void PageOutput::Hold(std::int64_t nowNs) {
    heldFrame = SilentFrame(nowNs);
    holdUntilNs = nowNs + longestStartNs;
    holding = true;
}

std::int64_t PageOutput::HeardFrames() {
    const std::int64_t nowNs = NowNs();
    AdvanceSilence(nowNs);
    latest = std::clamp(Now(nowNs), latest, handedOut);
    return latest;
}

std::int64_t PageOutput::Now(std::int64_t nowNs) const {
    return sounding ? schedule.At(clock.HeardAt(nowNs)) : SilentFrame(nowNs);
}

std::int64_t PageOutput::SilentFrame(std::int64_t nowNs) const {
    return holding ? heldFrame : FramesIn(nowNs - beginNs);
}

void PageOutput::Resume(std::int64_t nowNs) {
    beginNs = nowNs - NsUntil(heldFrame);
    holding = false;
}

void PageOutput::AdvanceSilence(std::int64_t nowNs) {
    if (!sounding) {
        if (!wanted && SilentFrame(nowNs) - handedOut > longestUnheard) {
            heldFrame = handedOut;
            Resume(nowNs);
        }
        Discard(SilentFrame(nowNs));
    }
}

void PageOutput::Discard(std::int64_t upTo) {
    while (handedOut < upTo) {
        const std::int64_t count = std::min<std::int64_t>(upTo - handedOut, chunkFrames);
        source.render(source.context, chunk.data(), static_cast<std::int32_t>(count));
        handedOut += count;
        discardedSound = std::any_of(chunk.begin(), chunk.begin() + 2 * count,
                                     [](float sample) { return sample != 0.0F; });
    }
}

// The context's next frame that is not too late has to be the one that the silence would have
// reached when it is heard; or, if that waits, the next one.
void PageOutput::TakeOver(std::int64_t nowNs) {
    std::int64_t begin = clock.RenderedBy(nowNs) + leadFrames;
    gain = 1.0F;
    if (!holding) {
        const std::int64_t next = SilentFrame(nowNs + NsUntil(begin - clock.HeardAt(nowNs)));
        Discard(next);
        begin += handedOut - next;
        gain = discardedSound ? 0.0F : 1.0F;
    }
    schedule.Clear(handedOut);
    schedule.BeginRun(begin);
    holding = false;
    sounding = true;
}

// The clock goes on as if all that is scheduled were heard.
void PageOutput::FallSilent(std::int64_t nowNs) {
    heldFrame = std::clamp(schedule.At(clock.HeardAt(nowNs)), latest, handedOut);
    Resume(nowNs);
    SkovraAudioStop(0.0);
    sounding = false;
    silentNs = nowNs;
}

void PageOutput::Fill(std::int64_t nowNs) {
    const std::int64_t heard = clock.HeardAt(nowNs);
    const std::int64_t rendered = clock.RenderedBy(nowNs);
    schedule.ForgetBefore(heard);
    if (schedule.End() < rendered + lateFrames) {
        schedule.BeginRun(rendered + leadFrames);
    }
    if (schedule.IsRunEmpty()) {
        PlayFirstChunk();
    }
    const std::int64_t end = std::min(rendered + aheadFrames, heard + longestWay - chunkFrames);
    while (schedule.End() < end) {
        PlayChunk();
    }
}

// The thread may have been interrupted after the time was chosen.
void PageOutput::PlayFirstChunk() {
    std::int64_t begin = schedule.End();
    PlayChunk();
    for (int attempt = 1; attempt < mostAttempts; ++attempt) {
        const std::int64_t rendered = clock.RenderedBy(NowNs());
        if (begin >= rendered + lateFrames) {
            break;
        }
        SkovraAudioStop(SecondsOf(begin));
        begin = rendered + leadFrames;
        schedule.MoveRun(begin);
        SkovraAudioPlay(chunk.data(), chunkFrames, SecondsOf(begin));
    }
}

void PageOutput::PlayChunk() {
    source.render(source.context, chunk.data(), chunkFrames);
    handedOut += chunkFrames;
    FadeIn();
    SkovraAudioPlay(chunk.data(), chunkFrames, SecondsOf(schedule.End()));
    schedule.Extend(chunkFrames);
}

void PageOutput::FadeIn() {
    for (std::size_t i = 0; i < chunk.size() && gain < 1.0F; i += 2) {
        gain = std::min(gain + largestGainStep, 1.0F);
        chunk[i] *= gain;
        chunk[i + 1] *= gain;
    }
}

void PageOutput::Notify(std::int64_t nowNs) {
    const bool silent = wanted && !sounding;
    if (silent && !notified && nowNs - silentNs >= patienceNs) {
        std::fputs("skovra: no sound device, playing silently\n", stderr);
        notified = true;
    }
    notified = silent && notified;
}

} // namespace sound
