// Mixes the voices for the output, and keeps a history of the mix.
#pragma once

#include "MixHistory.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace sound {

class Voice;

class Mixer {
public:
    explicit Mixer(std::size_t slots);

    /// Main thread: plays @p voice, or nothing if null, in @p slot. When it returns, the slot's
    /// previous voice is no longer used.
    void Play(std::size_t slot, Voice* voice) noexcept;

    /// As Source::render: real-time, one thread at a time.
    void Render(float* block, std::int32_t frames) noexcept;

    /// As Source::waitUntilReady, on the thread that renders.
    void WaitUntilReady(std::int32_t frames) noexcept;

    /// Main thread: copies one side of the @p count frames before @p end, see MixHistory::Copy.
    void CopyMix(std::int64_t end, int side, float* samples, std::int32_t count) const noexcept {
        history.Copy(end, side, samples, count);
    }

private:
    void RenderBlock(float* block, std::int32_t frames) noexcept;

    std::size_t slotCount;
    std::unique_ptr<std::atomic<Voice*>[]> slots;
    std::atomic<std::uint32_t> uses{0}; // odd while the output's thread uses the voices
    std::int64_t rendered = 0;          // the output's thread only
    MixHistory history;
};

} // namespace sound
