// An output that asks for frames, and has them heard, when the test says so.
#include "ScriptedOutput.h"

#include "Output.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

namespace {

constexpr int blockFrames = 1000; // no divisor of anything in the library

std::optional<sound::Source> source;
std::optional<script::Shortage> nextStartLacks;
int devicesAwaited = 0;
std::int64_t handedOut = 0;
std::int64_t heard = 0;

std::vector<float> Ask(int frames, bool wait) {
    std::vector<float> all(2 * static_cast<std::size_t>(frames), 9.0F);
    for (int done = 0; done < frames; done += blockFrames) {
        const int count = std::min(blockFrames, frames - done);
        if (wait) {
            source->waitUntilReady(source->context, count);
        }
        source->render(source->context, &all[2 * static_cast<std::size_t>(done)], count);
        handedOut += count;
    }
    return all;
}

} // namespace

namespace sound {

struct Output {};

OutputHandle StartOutput(const Source& played) {
    if (const auto lack = std::exchange(nextStartLacks, std::nullopt)) {
        if (lack == script::Shortage::Threads) {
            throw std::system_error(EAGAIN, std::generic_category());
        }
        throw std::bad_alloc();
    }
    source = played;
    handedOut = 0;
    heard = 0;
    return OutputHandle(new Output());
}

void StopOutput::operator()(Output* output) const noexcept {
    source.reset();
    delete output;
}

void AwaitDevice(Output&) noexcept {
    ++devicesAwaited;
}

std::int64_t HeardFrames(Output&) noexcept {
    return heard;
}

} // namespace sound

namespace script {

void Reset() {
    source.reset();
    nextStartLacks.reset();
    devicesAwaited = 0;
    handedOut = 0;
    heard = 0;
}

void RefuseNextStart(Shortage lack) {
    nextStartLacks = lack;
}

bool IsStarted() {
    return source.has_value();
}

int DevicesAwaited() {
    return devicesAwaited;
}

std::vector<float> Pull(int frames) {
    return Ask(frames, true);
}

std::vector<float> PullAtOnce(int frames) {
    return Ask(frames, false);
}

void SetHeard(std::int64_t frames) {
    heard = frames;
}

void HearAll() {
    heard = handedOut;
}

} // namespace script
