#include "SoundOutput.h"

#include "Output.h"
#include "VirtualTime.h"

#include <algorithm>
#include <array>

namespace sound {

struct Output {
    Source source;
    std::int64_t played = 0; ///< frames, all of them heard
};

} // namespace sound

namespace record {

namespace {

constexpr std::int64_t longestBlock = 1024;

sound::Output* playing = nullptr; // the only one, if any
Listener listening;

} // namespace

void ListenToSound(Listener listener) {
    listening = std::move(listener);
}

void PlaySoundUntil(std::int64_t ms) {
    if (playing == nullptr) {
        return;
    }
    std::array<float, 2 * longestBlock> block;
    const sound::Source& source = playing->source;
    const std::int64_t end = FramesUntil(ms);
    while (playing->played < end) {
        const auto count = static_cast<std::int32_t>(std::min(longestBlock, end - playing->played));
        source.waitUntilReady(source.context, count);
        source.render(source.context, block.data(), count);
        playing->played += count;
        if (listening) {
            listening(std::span(block).first(2 * static_cast<std::size_t>(count)));
        }
    }
}

} // namespace record

namespace sound {

OutputHandle StartOutput(const Source& source) {
    OutputHandle output(new Output{source});
    record::playing = output.get();
    return output;
}

void StopOutput::operator()(Output* output) const noexcept {
    record::playing = nullptr;
    delete output;
}

void AwaitDevice(Output&) noexcept {}

std::int64_t HeardFrames(Output& output) noexcept {
    return output.played;
}

} // namespace sound
