// Which callback is due when, as programs for freeglut expect it.
#include "Schedule.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void First(int) {}
void Second(int) {}

/// What is taken at @p nowMs, in a word or two.
std::string TakeAt(double nowMs, Schedule& schedule) {
    const auto due = schedule.Take(nowMs);
    switch (due.work) {
    case Schedule::Work::None:
        return "nothing";
    case Schedule::Work::Reshape:
        return "reshape";
    case Schedule::Work::Display:
        return "display";
    case Schedule::Work::Timer:
        break;
    }
    const std::string name = due.callback == First ? "first" : "second";
    return name + " " + std::to_string(due.value);
}

} // namespace

TEST(Schedule, HasNothingToDoAtFirst) {
    Schedule schedule;
    EXPECT_EQ(TakeAt(0, schedule), "nothing");
    EXPECT_LT(schedule.WaitMs(0), 0.0);
}

TEST(Schedule, RunsATimerOnceAndNotEarly) {
    Schedule schedule;
    schedule.ArmTimer(100, 25, First, 7);
    EXPECT_EQ(schedule.WaitMs(110), 15.0);
    EXPECT_EQ(TakeAt(124.9, schedule), "nothing");
    EXPECT_EQ(TakeAt(125, schedule), "first 7");
    EXPECT_EQ(TakeAt(1000, schedule), "nothing");
}

TEST(Schedule, ALateTimerIsDueAtOnce) {
    Schedule schedule;
    schedule.ArmTimer(0, 25, First, 1);
    EXPECT_EQ(schedule.WaitMs(300), 0.0);
}

TEST(Schedule, RunsTimersInTheOrderInWhichTheyAreDue) {
    Schedule schedule;
    schedule.ArmTimer(0, 30, First, 1);
    schedule.ArmTimer(0, 10, Second, 2);
    schedule.ArmTimer(5, 15, First, 3);
    EXPECT_EQ(TakeAt(50, schedule), "second 2");
    EXPECT_EQ(TakeAt(50, schedule), "first 3");
    EXPECT_EQ(TakeAt(50, schedule), "first 1");
}

TEST(Schedule, RunsTimersDueAtTheSameTimeAsTheyWereArmed) {
    Schedule schedule;
    schedule.ArmTimer(0, 10, First, 1);
    schedule.ArmTimer(0, 10, Second, 2);
    EXPECT_EQ(TakeAt(10, schedule), "first 1");
    EXPECT_EQ(TakeAt(10, schedule), "second 2");
}

TEST(Schedule, DrawsOnceForAnyNumberOfRequests) {
    Schedule schedule;
    schedule.PostRedisplay();
    schedule.PostRedisplay();
    EXPECT_EQ(schedule.WaitMs(0), 0.0);
    EXPECT_EQ(TakeAt(0, schedule), "display");
    EXPECT_EQ(TakeAt(0, schedule), "nothing");
}

TEST(Schedule, ANewSizeComesBeforeEverythingAndIsDrawnAtOnce) {
    Schedule schedule;
    schedule.ArmTimer(0, 10, First, 1);
    schedule.PostReshape();
    EXPECT_EQ(schedule.WaitMs(20), 0.0);
    EXPECT_EQ(TakeAt(20, schedule), "reshape");
    EXPECT_EQ(schedule.WaitMs(20), 0.0);
    EXPECT_EQ(TakeAt(20, schedule), "display");
    EXPECT_EQ(TakeAt(20, schedule), "first 1");
}

TEST(Schedule, DrawsANewSizeOnceEvenIfADrawingWasAskedFor) {
    Schedule schedule;
    schedule.PostRedisplay();
    schedule.PostReshape();
    EXPECT_EQ(TakeAt(0, schedule), "reshape");
    EXPECT_EQ(TakeAt(0, schedule), "display");
    EXPECT_EQ(TakeAt(0, schedule), "nothing");
}

TEST(Schedule, TimerAndDrawingTakeTurnsWhenBothAreLate) {
    // Each drawing takes 30 ms; the timer comes again after 25.
    Schedule schedule;
    double nowMs = 0;
    schedule.ArmTimer(nowMs, 0, First, 1);
    std::string order;
    for (int i = 0; i < 6; ++i) {
        const auto taken = TakeAt(nowMs, schedule);
        order += taken + ", ";
        nowMs += 30;
        if (taken == "first 1") {
            schedule.ArmTimer(nowMs, 25, First, 1);
            schedule.PostRedisplay();
        }
    }
    EXPECT_EQ(order, "first 1, display, first 1, display, first 1, display, ");
}

TEST(Schedule, ATimerArmedForNowDoesNotKeepTheDrawingOff) {
    Schedule schedule;
    schedule.PostRedisplay();
    schedule.ArmTimer(10, 0, First, 1);
    schedule.ArmTimer(10, 0, Second, 2);
    EXPECT_EQ(TakeAt(10, schedule), "display");
    EXPECT_EQ(TakeAt(10, schedule), "first 1");
    schedule.ArmTimer(11, 0, First, 1);
    schedule.PostRedisplay();
    EXPECT_EQ(TakeAt(11, schedule), "second 2");
    EXPECT_EQ(TakeAt(11, schedule), "display");
    EXPECT_EQ(TakeAt(12, schedule), "first 1");
}
