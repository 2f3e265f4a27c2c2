// Decoded music on its way from one thread to another.
#include "Ring.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <thread>
#include <vector>

using sound::Ring;

TEST(Ring, IsEmptyAtFirst) {
    Ring ring(8);
    std::array<float, 2> frame = {};

    EXPECT_EQ(ring.Free(), 8U);
    EXPECT_EQ(ring.Available(), 0U);
    EXPECT_EQ(ring.Read(frame.data(), 1), 0U);
}

TEST(Ring, HoldsAsManyFramesAsItWasMadeFor) {
    Ring ring(5);
    const std::vector<float> frames(10, 0.5F);

    ring.Write(frames.data(), 5);

    EXPECT_EQ(ring.Free(), 0U);
    EXPECT_EQ(ring.Available(), 5U);
}

TEST(Ring, GivesFramesInTheirOrderAcrossItsEnd) {
    Ring ring(4);
    const std::vector<float> first = {1, -1, 2, -2, 3, -3};
    const std::vector<float> second = {4, -4, 5, -5, 6, -6};
    std::vector<float> read(8);
    ring.Write(first.data(), 3);
    ring.Read(read.data(), 2);

    ring.Write(second.data(), 3);
    const std::size_t got = ring.Read(read.data(), 4);

    EXPECT_EQ(got, 4U);
    EXPECT_EQ(read, (std::vector<float>{3, -3, 4, -4, 5, -5, 6, -6}));
}

TEST(Ring, GivesWhatItHasWhenAskedForMore) {
    Ring ring(4);
    const std::vector<float> frames = {1, -1, 2, -2};
    std::vector<float> read(8, 9.0F);
    ring.Write(frames.data(), 2);

    EXPECT_EQ(ring.Read(read.data(), 4), 2U);
    EXPECT_EQ(read, (std::vector<float>{1, -1, 2, -2, 9, 9, 9, 9}));
}

TEST(Ring, IsEmptyAfterReset) {
    Ring ring(4);
    const std::vector<float> frames(6, 1.0F);
    ring.Write(frames.data(), 3);

    ring.Reset();

    EXPECT_EQ(ring.Free(), 4U);
    EXPECT_EQ(ring.Available(), 0U);
}

TEST(Ring, LosesAndInventsNothingBetweenTwoThreads) {
    constexpr int frameCount = 200000;
    Ring ring(64);
    std::thread writer([&ring] {
        for (int next = 0; next < frameCount;) {
            const std::array<float, 2> frame = {static_cast<float>(next),
                                                static_cast<float>(-next)};
            if (ring.Free() > 0) {
                ring.Write(frame.data(), 1);
                ++next;
            } else {
                std::this_thread::yield();
            }
        }
    });

    int wrong = 0;
    std::array<float, 14> frames = {};
    for (int next = 0; next < frameCount;) {
        const std::size_t got = ring.Read(frames.data(), 7);
        for (std::size_t i = 0; i < got; ++i, ++next) {
            const auto expected = static_cast<float>(next);
            wrong += frames[2 * i] != expected || frames[2 * i + 1] != -expected ? 1 : 0;
        }
        if (got == 0) {
            std::this_thread::yield();
        }
    }
    writer.join();

    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(ring.Available(), 0U);
}
