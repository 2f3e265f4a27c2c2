// What is heard between two reports of the device.
#include "PlayHead.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <limits>
#include <thread>

using sound::PlayHead;

static constexpr std::int64_t ms = 1'000'000; // in ns
static constexpr std::int64_t unbounded = std::numeric_limits<std::int64_t>::max();

TEST(PlayHead, IsAtTheBeginningBeforeTheFirstReport) {
    PlayHead head;

    EXPECT_EQ(head.HeardFrames(5000 * ms, unbounded), 0);
}

TEST(PlayHead, RunsOnAtTheNominalRateAfterAReport) {
    PlayHead head;
    head.Publish(1000, 20 * ms);

    EXPECT_EQ(head.HeardFrames(20 * ms, unbounded), 1000);
    EXPECT_EQ(head.HeardFrames(30 * ms, unbounded), 1441);
    EXPECT_EQ(head.HeardFrames(1020 * ms, unbounded), 45100);
}

TEST(PlayHead, AnswersAnewEveryMillisecond) {
    PlayHead head;
    head.Publish(0, 0);

    std::int64_t last = -1;
    for (int now = 0; now < 100; ++now) {
        const std::int64_t heard = head.HeardFrames(now * ms, unbounded);
        EXPECT_GT(heard, last);
        last = heard;
    }
}

TEST(PlayHead, NeverPassesWhatWasHandedOut) {
    PlayHead head;
    head.Publish(1000, 0);

    EXPECT_EQ(head.HeardFrames(10 * ms, 1200), 1200);
    EXPECT_EQ(head.HeardFrames(500 * ms, 1200), 1200);
    EXPECT_EQ(head.HeardFrames(500 * ms, 2000), 2000);
}

TEST(PlayHead, StandsStillUntilALaterReportCatchesUp) {
    PlayHead head;
    head.Publish(0, 0);
    ASSERT_EQ(head.HeardFrames(100 * ms, unbounded), 4410);

    head.Publish(4000, 100 * ms);

    EXPECT_EQ(head.HeardFrames(100 * ms, unbounded), 4410);
    EXPECT_EQ(head.HeardFrames(105 * ms, unbounded), 4410);
    EXPECT_EQ(head.HeardFrames(110 * ms, unbounded), 4441);
}

TEST(PlayHead, FollowsADeviceThatRunsFast) {
    PlayHead head;
    head.Publish(0, 0);
    head.Publish(44200, 1000 * ms);

    EXPECT_EQ(head.HeardFrames(1000 * ms, unbounded), 44200);
}

TEST(PlayHead, SurvivesDaysOfPlaying) {
    constexpr std::int64_t hundredDays = 100LL * 24 * 3600;
    PlayHead head;
    head.Publish(0, 0);

    EXPECT_EQ(head.Extrapolate(hundredDays * 1000 * ms), hundredDays * 44100);
}

TEST(PlayHead, NeverMixesTwoReports) {
    // Each report is of the same movement, so any mixture of two would lie elsewhere.
    PlayHead head;
    std::atomic<bool> stop{false};
    head.Publish(0, 0);
    std::thread device([&] {
        for (std::int64_t i = 0; !stop; i = (i + 1) % 100000) {
            head.Publish(441 * i, 10 * ms * i);
        }
    });

    std::int64_t wrong = 0;
    for (int i = 0; i < 200000; ++i) {
        wrong += head.Extrapolate(10 * ms) != 441 ? 1 : 0;
    }
    stop = true;
    device.join();

    EXPECT_EQ(wrong, 0);
}
