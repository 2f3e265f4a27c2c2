// Frames of the timeline on the time of an audio context.
#include "Schedule.h"

#include <gtest/gtest.h>

#include <cstdint>

using sound::Schedule;

TEST(Schedule, CountsUpToItsFirstFrame) {
    Schedule schedule;
    schedule.Clear(1000);
    EXPECT_EQ(schedule.At(123'456), 1000);

    schedule.BeginRun(5000);
    schedule.Extend(100);

    EXPECT_EQ(schedule.At(4900), 900);
    EXPECT_EQ(schedule.At(5000), 1000);
    EXPECT_EQ(schedule.At(5042), 1042);
    EXPECT_EQ(schedule.At(6000), 1100);
    EXPECT_EQ(schedule.End(), 5100);
}

TEST(Schedule, HaltsBetweenRuns) {
    Schedule schedule;
    schedule.Clear(0);
    schedule.BeginRun(100);
    schedule.Extend(50);
    schedule.BeginRun(1000);
    EXPECT_TRUE(schedule.IsRunEmpty());
    schedule.Extend(50);
    EXPECT_FALSE(schedule.IsRunEmpty());

    EXPECT_EQ(schedule.At(500), 50);
    EXPECT_EQ(schedule.At(1010), 60);

    schedule.MoveRun(1100);
    EXPECT_EQ(schedule.At(1010), 50);
    EXPECT_EQ(schedule.At(1110), 60);
}

TEST(Schedule, RemembersTheRunThatIsHeard) {
    Schedule schedule;
    schedule.Clear(0);
    for (std::int64_t run = 1; run <= 10; ++run) {
        schedule.BeginRun(run * 1000);
        schedule.Extend(100);
    }

    schedule.ForgetBefore(5050);

    EXPECT_EQ(schedule.At(5050), 450);
    EXPECT_EQ(schedule.At(10'020), 920);
    EXPECT_EQ(schedule.At(4000), -600); // forgotten
}
