#include "Mixer.h"

#include "Output.h"
#include "Spectrum.h"
#include "Voice.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdint>
#include <thread>

namespace sound {

// The window of the longest spectrum, and what is handed out but not heard yet.
static constexpr std::int64_t historyFrames =
    std::bit_ceil(std::uint64_t{2} * Spectrum::mostBands + std::uint64_t{longestWay});

// A block takes less than a millisecond to render. To yield instead could keep its thread from
// running, if that has a lower priority.
static constexpr std::chrono::microseconds nap{200};

Mixer::Mixer(std::size_t slotsWanted)
    : slotCount(slotsWanted), slots(std::make_unique<std::atomic<Voice*>[]>(slotsWanted)),
      history(historyFrames) {}

void Mixer::Play(std::size_t slot, Voice* voice) noexcept {
    slots[slot].store(voice);
    // A block begun before the store may still use the previous voice.
    const std::uint32_t use = uses.load();
    while (use % 2 == 1 && uses.load() == use) {
        std::this_thread::sleep_for(nap);
    }
}

void Mixer::Render(float* block, std::int32_t frames) noexcept {
    uses.fetch_add(1);
    for (std::int64_t done = 0; done < frames; done += Voice::longestBlock) {
        const std::int64_t left = frames - done;
        RenderBlock(block + 2 * done,
                    static_cast<std::int32_t>(std::min<std::int64_t>(left, Voice::longestBlock)));
    }
    uses.fetch_add(1);
}

void Mixer::RenderBlock(float* block, std::int32_t frames) noexcept {
    const std::int64_t samples = 2 * static_cast<std::int64_t>(frames);
    std::fill_n(block, samples, 0.0F);
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        if (Voice* voice = slots[slot].load()) {
            voice->MixInto(block, frames, rendered);
        }
    }
    std::transform(block, block + samples, block,
                   [](float sample) { return std::clamp(sample, -1.0F, 1.0F); });
    history.Append(block, frames);
    rendered += frames;
}

void Mixer::WaitUntilReady(std::int32_t frames) noexcept {
    uses.fetch_add(1);
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        if (Voice* voice = slots[slot].load()) {
            voice->WaitUntilReady(frames);
        }
    }
    uses.fetch_add(1);
}

} // namespace sound
