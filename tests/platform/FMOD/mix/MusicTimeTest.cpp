// Which moment of the music is heard when.
#include "MusicTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using sound::MusicTime;
using Course = sound::MusicTime::Course;

static void ExpectMoment(const MusicTime& time, std::int64_t outputFrame, std::int64_t musicFrame,
                         Course course) {
    const MusicTime::Moment moment = time.At(outputFrame);
    EXPECT_EQ(moment.musicFrame, musicFrame) << "at output frame " << outputFrame;
    EXPECT_EQ(moment.course, course) << "at output frame " << outputFrame;
}

TEST(MusicTime, HasNotBegunBeforeTheFirstMark) {
    MusicTime time;
    ExpectMoment(time, 500, 0, Course::Halted);

    time.Mark(1000, 0, Course::Running);
    ExpectMoment(time, 999, 0, Course::Halted);
}

TEST(MusicTime, RunsFromItsMark) {
    MusicTime time;
    time.Mark(1000, 0, Course::Running);

    ExpectMoment(time, 1000, 0, Course::Running);
    ExpectMoment(time, 1500, 500, Course::Running);
}

TEST(MusicTime, StandsStillWhileHaltedAndLosesNothing) {
    MusicTime time;
    time.Mark(1000, 0, Course::Running);
    time.Mark(1300, 300, Course::Halted);
    time.Mark(2000, 300, Course::Running);

    ExpectMoment(time, 1299, 299, Course::Running);
    ExpectMoment(time, 1300, 300, Course::Halted);
    ExpectMoment(time, 1999, 300, Course::Halted);
    ExpectMoment(time, 2000, 300, Course::Running);
    ExpectMoment(time, 2001, 301, Course::Running);
}

TEST(MusicTime, StaysAtTheLengthAfterTheEnd) {
    MusicTime time;
    time.Mark(10, 0, Course::Running);
    time.Mark(30, 20, Course::Ended);

    ExpectMoment(time, 29, 19, Course::Running);
    ExpectMoment(time, 30, 20, Course::Ended);
    ExpectMoment(time, 1000000, 20, Course::Ended);
}

TEST(MusicTime, AnswersTheOldestItKnowsForLongGone) {
    MusicTime time;
    for (std::int64_t i = 0; i < 1000; ++i) {
        time.Mark(10 * i, i, Course::Halted);
    }

    ExpectMoment(time, 9990, 999, Course::Halted);
    EXPECT_GE(time.At(0).musicFrame, 744);
    EXPECT_LE(time.At(0).musicFrame, 745);
}

TEST(MusicTime, NeverMixesTwoMarks) {
    // Every mark lies on one line, so any mixture of two would lie elsewhere.
    MusicTime time;
    std::atomic<std::int64_t> marked{0};
    time.Mark(7, 0, Course::Running);
    std::thread output([&] {
        for (std::int64_t i = 1; i < 200000; ++i) {
            time.Mark(7 + i, i, i % 2 == 0 ? Course::Running : Course::Halted);
            marked = i;
        }
    });

    int wrong = 0;
    while (marked < 199999) {
        const std::int64_t at = marked;
        const MusicTime::Moment moment = time.At(7 + at);
        // A reader so slow that all it looked at was overwritten gets a later mark.
        wrong += moment.musicFrame < at ? 1 : 0;
        wrong += moment.musicFrame == at &&
                         moment.course != (at % 2 == 0 ? Course::Running : Course::Halted)
                     ? 1
                     : 0;
    }
    output.join();

    EXPECT_EQ(wrong, 0);
}
