// The mix of the last moments.
#include "MixHistory.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using sound::MixHistory;

static std::vector<float> Counted(int from, int count) {
    std::vector<float> frames;
    for (int i = from; i < from + count; ++i) {
        frames.push_back(static_cast<float>(i));
        frames.push_back(static_cast<float>(-i));
    }
    return frames;
}

static std::vector<float> Copied(const MixHistory& history, std::int64_t end, int side, int count) {
    std::vector<float> samples(static_cast<std::size_t>(count), 99.0F);
    history.Copy(end, side, samples.data(), count);
    return samples;
}

TEST(MixHistory, GivesEachSideOfTheFramesBeforeTheOneAskedFor) {
    MixHistory history(16);
    history.Append(Counted(0, 10).data(), 10);

    EXPECT_EQ(Copied(history, 7, 0, 3), (std::vector<float>{4, 5, 6}));
    EXPECT_EQ(Copied(history, 7, 1, 3), (std::vector<float>{-4, -5, -6}));
}

TEST(MixHistory, ReadsZeroBeforeTheBeginning) {
    MixHistory history(16);
    history.Append(Counted(1, 4).data(), 4);

    EXPECT_EQ(Copied(history, 2, 0, 4), (std::vector<float>{0, 0, 1, 2}));
}

TEST(MixHistory, GivesTheNewestInPlaceOfWhatIsStillToCome) {
    MixHistory history(16);
    history.Append(Counted(1, 2).data(), 2);

    EXPECT_EQ(Copied(history, 4, 0, 4), (std::vector<float>{0, 0, 1, 2}));
}

TEST(MixHistory, ForgetsTheOldest) {
    MixHistory history(8);
    history.Append(Counted(0, 6).data(), 6);
    history.Append(Counted(6, 4).data(), 4);

    EXPECT_EQ(Copied(history, 10, 0, 10), (std::vector<float>{0, 0, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(MixHistory, NeverGivesAFrameOfAnotherMoment) {
    MixHistory history(64);
    std::atomic<std::int64_t> written{0};
    std::thread writer([&] {
        for (int from = 0; from < 400000; from += 16) {
            history.Append(Counted(from, 16).data(), 16);
            written = from + 16;
        }
    });

    int wrong = 0;
    while (written < 400000) {
        const std::int64_t end = written;
        std::array<float, 32> samples = {};
        history.Copy(end, 0, samples.data(), 32);
        for (std::int64_t i = 0; i < 32; ++i) {
            const float sample = samples[static_cast<std::size_t>(i)];
            wrong += sample != 0.0F && sample != static_cast<float>(end - 32 + i) ? 1 : 0;
        }
    }
    writer.join();

    EXPECT_EQ(wrong, 0);
}
