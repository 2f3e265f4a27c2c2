// The sum of the voices, and when a voice is no longer used.
#include "Mixer.h"

#include "OneProcessor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

// A thread with real-time priority that did anything else would not let the one run that renders.
TEST(MixerTest, SleepsUntilAVoiceIsNoLongerUsed) {
    constexpr std::int32_t frames = 22'050;
    std::vector<float> block(std::size_t{2} * frames);
    sound::Mixer mixer(1);
    std::atomic<bool> begun{false};
    std::atomic<bool> enough{false};

    const std::int64_t used = processor::UsedWaiting(
        [&] {
            while (!enough) {
                begun = true;
                mixer.Render(block.data(), frames);
            }
        },
        [&] {
            while (!begun) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            for (int i = 0; i < 10; ++i) {
                mixer.Play(0, nullptr);
            }
            enough = true;
        });

    EXPECT_LT(used, 100'000'000);
}
