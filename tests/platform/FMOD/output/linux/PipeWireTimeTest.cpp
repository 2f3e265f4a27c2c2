// What a PipeWire stream's report of its time means in frames heard.
#include "PipeWireTime.h"

#include "OutputTimeline.h"

#include <pipewire/stream.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using sound::PlayReport;
using sound::ReportOf;

static constexpr std::int64_t ms = 1'000'000; // in ns
static constexpr std::int64_t now = 7'000'000 * ms;
static constexpr std::int64_t written = 100'000;

static pw_time TimeOf(std::uint32_t rateHz) {
    pw_time time = {};
    time.now = now;
    time.rate = {1, rateHz};
    time.ticks = 123'456;
    return time;
}

static void ExpectUnknown(const pw_time& time) {
    EXPECT_EQ(ReportOf(time, written, now).playedFrames, sound::unknownPosition);
}

TEST(PipeWireTime, HasHeardAllThatWasWrittenWhenNothingIsOnItsWay) {
    const PlayReport report = ReportOf(TimeOf(44100), written, now);

    EXPECT_EQ(report.playedFrames, written);
    EXPECT_EQ(report.ns, now);
}

TEST(PipeWireTime, TakesOffWhatIsQueuedAndBuffered) {
    pw_time time = TimeOf(44100);
    time.queued = 2048;
    time.buffered = 32;

    EXPECT_EQ(ReportOf(time, written, now).playedFrames, written - 2080);
}

TEST(PipeWireTime, TakesOffTheDelayInTheGraphsTime) {
    for (const std::uint32_t rateHz : {44100U, 48000U, 96000U, 192000U}) {
        pw_time time = TimeOf(rateHz);
        time.delay = rateHz / 5;

        EXPECT_EQ(ReportOf(time, written, now).playedFrames, written - 8820) << rateHz;
    }
}

TEST(PipeWireTime, RoundsTheDelayToTheNearestFrame) {
    pw_time time = TimeOf(48000);
    time.delay = 1; // 0.92 frames

    EXPECT_EQ(ReportOf(time, written, now).playedFrames, written - 1);
}

TEST(PipeWireTime, KnowsATimeBaseThatIsNoSample) {
    pw_time time = TimeOf(1000);
    time.rate = {3, 1000};
    time.delay = 100; // 300 ms

    EXPECT_EQ(ReportOf(time, written, now).playedFrames, written - 13'230);
}

// A listener may have told the system that a loudspeaker is earlier than it says.
TEST(PipeWireTime, FollowsADelayBelowZero) {
    pw_time time = TimeOf(48000);
    time.delay = -4800;

    EXPECT_EQ(ReportOf(time, written, now).playedFrames, written + 4410);
}

TEST(PipeWireTime, IsBelowZeroUntilTheFirstFrameIsHeard) {
    pw_time time = TimeOf(44100);
    time.buffered = 32;
    time.delay = 8820;

    EXPECT_EQ(ReportOf(time, 2048, now).playedFrames, 2048 - 8852);
}

TEST(PipeWireTime, IsOfTheMomentOfTheReport) {
    pw_time time = TimeOf(44100);
    time.now = now - 30 * ms;

    EXPECT_EQ(ReportOf(time, written, now).ns, now - 30 * ms);
}

TEST(PipeWireTime, IsTheSameWhateverTheGraphsCounterSays) {
    pw_time time = TimeOf(48000);
    for (const std::uint64_t ticks :
         {std::uint64_t{0}, std::numeric_limits<std::uint64_t>::max()}) {
        time.ticks = ticks;

        EXPECT_EQ(ReportOf(time, written, now).playedFrames, written);
    }
}

TEST(PipeWireTime, IsExactAfterAYearOfPlaying) {
    constexpr std::int64_t year = std::int64_t{365} * 24 * 3600 * sound::outputRateHz;
    pw_time time = TimeOf(48000);
    time.delay = 480;

    EXPECT_EQ(ReportOf(time, year, now).playedFrames, year - 441);
}

TEST(PipeWireTime, IsUnknownBeforeTheFirstCycle) {
    pw_time time = TimeOf(48000);
    time.now = 0;

    ExpectUnknown(time);
}

TEST(PipeWireTime, IsUnknownWithoutARate) {
    pw_time time = TimeOf(48000);
    time.rate = {0, 0};
    ExpectUnknown(time);
    time.rate = {0, 48000};
    ExpectUnknown(time);
    time.rate = {1, 0};
    ExpectUnknown(time);
}

TEST(PipeWireTime, IsUnknownIfTheReportIsFromAnotherTime) {
    pw_time time = TimeOf(48000);
    for (const std::int64_t off :
         {-5000 * ms, -1001 * ms, 1001 * ms, std::numeric_limits<std::int64_t>::max() - now}) {
        time.now = now + off;

        ExpectUnknown(time);
    }
}

TEST(PipeWireTime, IsUnknownIfMoreIsOnItsWayThanCanBe) {
    pw_time time = TimeOf(48000);
    time.delay = std::numeric_limits<std::int64_t>::max();
    ExpectUnknown(time);
    time.delay = std::numeric_limits<std::int64_t>::min();
    ExpectUnknown(time);
    time.delay = 0;
    time.queued = std::numeric_limits<std::uint64_t>::max() - 100; // it counted below 0
    ExpectUnknown(time);
    time.queued = 0;
    time.buffered = std::numeric_limits<std::uint64_t>::max();
    ExpectUnknown(time);
}
