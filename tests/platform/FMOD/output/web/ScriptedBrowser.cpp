#include "ScriptedBrowser.h"

#include "BrowserAudio.h"
#include "Output.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace browser {

static Context context;

Context& Current() {
    return context;
}

void Reset() {
    context = Context();
}

void Context::Run() {
    beginNs = nowNs - sound::NsUntil(haltedAt);
    state = sound::audioRunning;
}

void Context::Interrupt(double newState) {
    haltedAt = RenderedFrames();
    state = newState;
}

void Context::Pass(std::int64_t ns) {
    nowNs += ns;
    std::erase_if(ends, [this](std::int64_t end) { return end < nowNs; });
}

std::int64_t Context::RenderedFrames() const {
    if (state != sound::audioRunning || standsStill) {
        return haltedAt;
    }
    const std::int64_t bursts = sound::FramesIn(nowNs - beginNs) / burstFrames;
    return std::max(haltedAt, (bursts + 1) * burstFrames);
}

std::int64_t Context::HeardFrames() const {
    return std::max<std::int64_t>(sound::FramesIn(nowNs - beginNs) - latencyFrames, 0);
}

std::int64_t Context::Heard() const {
    const auto end = static_cast<std::size_t>(HeardFrames() + 1);
    for (std::size_t i = std::min(end, played.size()); i > 0; --i) {
        if (played[i - 1] != 0) {
            return played[i - 1];
        }
    }
    return 0;
}

} // namespace browser

using browser::context;

void SkovraAudioOpen(double, double) {
    ++context.opened;
    if (context.mayOpen && context.state == sound::audioNone) {
        context.state = context.openState;
        if (context.state == sound::audioRunning) {
            context.Run();
        }
    }
}

void SkovraAudioRead(SkovraAudioReport* report) {
    *report = {context.state, SkovraAudioNow(), 0.0, 0.0, 0.0, 0.0};
    if (context.state == sound::audioNone) {
        return;
    }
    const auto rate = static_cast<double>(sound::outputRateHz);
    report->currentTime = static_cast<double>(context.RenderedFrames()) / rate;
    report->latency = static_cast<double>(context.latencyFrames) / rate;
    if (context.stamps == browser::Stamps::Exact && !context.standsStill) {
        report->stampTime = static_cast<double>(context.HeardFrames()) / rate;
        report->stampMs = report->nowMs + static_cast<double>(context.stampErrorNs) / 1e6;
    } else if (context.stamps == browser::Stamps::Derived) {
        report->stampTime = report->currentTime - report->latency;
        report->stampMs = report->nowMs - report->latency * 1000.0;
    }
}

double SkovraAudioNow() {
    return static_cast<double>(context.nowNs) / 1e6;
}

// As browsers do: what comes too late begins at once.
void SkovraAudioPlay(const float* frames, std::int32_t count, double time) {
    context.Pass(context.lossNs);
    context.lossNs = 0;
    const auto wanted = std::llround(time * static_cast<double>(sound::outputRateHz));
    const auto begin =
        static_cast<std::size_t>(std::max<std::int64_t>(wanted, context.RenderedFrames()));
    const auto size = static_cast<std::size_t>(count);
    context.played.resize(std::max(context.played.size(), begin + size));
    for (std::size_t i = 0; i < size; ++i) {
        context.played[begin + i] += static_cast<std::int64_t>(frames[2 * i]);
    }
    context.ends.push_back(context.beginNs +
                           sound::NsUntil(static_cast<std::int64_t>(begin + size)));
}

void SkovraAudioStop(double time) {
    const std::int64_t from =
        std::max(std::llround(time * static_cast<double>(sound::outputRateHz)),
                 static_cast<long long>(context.RenderedFrames()));
    if (from < std::ssize(context.played)) {
        context.played.resize(static_cast<std::size_t>(from));
    }
}

void SkovraAudioClose() {
    context.state = sound::audioNone;
}
