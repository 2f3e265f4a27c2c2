// Which moment of the music is heard when.
#include "MusicTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using sound::MusicTime;
using State = sound::MusicTime::State;

static void ExpectMoment(const MusicTime& time, std::int64_t outputFrame, std::int64_t musicFrame,
                         State state) {
    const MusicTime::Moment moment = time.At(outputFrame);
    EXPECT_EQ(moment.musicFrame, musicFrame) << "at output frame " << outputFrame;
    EXPECT_EQ(moment.state, state) << "at output frame " << outputFrame;
}

TEST(MusicTime, HasNotBegunBeforeTheFirstMark) {
    MusicTime time;
    ExpectMoment(time, 500, 0, State::Halted);

    time.Mark(1000, 0, State::Running);
    ExpectMoment(time, 999, 0, State::Halted);
}

TEST(MusicTime, RunsFromItsMark) {
    MusicTime time;
    time.Mark(1000, 0, State::Running);

    ExpectMoment(time, 1000, 0, State::Running);
    ExpectMoment(time, 1500, 500, State::Running);
}

TEST(MusicTime, StandsStillWhileHaltedAndLosesNothing) {
    MusicTime time;
    time.Mark(1000, 0, State::Running);
    time.Mark(1300, 300, State::Halted);
    time.Mark(2000, 300, State::Running);

    ExpectMoment(time, 1299, 299, State::Running);
    ExpectMoment(time, 1300, 300, State::Halted);
    ExpectMoment(time, 1999, 300, State::Halted);
    ExpectMoment(time, 2000, 300, State::Running);
    ExpectMoment(time, 2001, 301, State::Running);
}

TEST(MusicTime, StaysAtTheLengthAfterTheEnd) {
    MusicTime time;
    time.Mark(10, 0, State::Running);
    time.Mark(30, 20, State::Ended);

    ExpectMoment(time, 29, 19, State::Running);
    ExpectMoment(time, 30, 20, State::Ended);
    ExpectMoment(time, 1000000, 20, State::Ended);
}

TEST(MusicTime, AnswersTheOldestItKnowsForLongGone) {
    MusicTime time;
    for (std::int64_t i = 0; i < 1000; ++i) {
        time.Mark(10 * i, i, State::Halted);
    }

    ExpectMoment(time, 9990, 999, State::Halted);
    EXPECT_GE(time.At(0).musicFrame, 744);
    EXPECT_LE(time.At(0).musicFrame, 745);
}

TEST(MusicTime, NeverMixesTwoMarks) {
    // Every mark lies on one line, so any mixture of two would lie elsewhere.
    MusicTime time;
    std::atomic<std::int64_t> marked{0};
    time.Mark(7, 0, State::Running);
    std::thread output([&] {
        for (std::int64_t i = 1; i < 200000; ++i) {
            time.Mark(7 + i, i, i % 2 == 0 ? State::Running : State::Halted);
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
                         moment.state != (at % 2 == 0 ? State::Running : State::Halted)
                     ? 1
                     : 0;
    }
    output.join();

    EXPECT_EQ(wrong, 0);
}
