// What a PipeWire stream's report of its time means in frames heard.
#include "PipeWireTime.h"

#include "OutputTimeline.h"

#include <pipewire/stream.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

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

TEST(PipeWireTime, HasHeardWhatWasWrittenLessWhatIsOnItsWay) {
    constexpr std::int64_t year = std::int64_t{365} * 24 * 3600 * sound::outputRateHz;
    const struct {
        const char* what;
        spa_fraction rate;
        std::uint64_t queued, buffered;
        std::int64_t delay, written, played;
    } cases[] = {
        {"nothing on its way", {1, 44100}, 0, 0, 0, written, written},
        {"queued and buffered", {1, 44100}, 2048, 32, 0, written, written - 2080},
        {"delay at 44.1 kHz", {1, 44100}, 0, 0, 8820, written, written - 8820},
        {"delay at 48 kHz", {1, 48000}, 0, 0, 9600, written, written - 8820},
        {"delay at 96 kHz", {1, 96000}, 0, 0, 19'200, written, written - 8820},
        {"delay at 192 kHz", {1, 192'000}, 0, 0, 38'400, written, written - 8820},
        {"0.92 frames of delay", {1, 48000}, 0, 0, 1, written, written - 1},
        {"a time base that is no sample", {3, 1000}, 0, 0, 100, written, written - 13'230},
        // A listener may have told the system that a loudspeaker is earlier than it says.
        {"delay below zero", {1, 48000}, 0, 0, -4800, written, written + 4410},
        {"the first frame not heard yet", {1, 44100}, 0, 32, 8820, 2048, 2048 - 8852},
        {"a year of playing", {1, 48000}, 0, 0, 480, year, year - 441},
    };
    for (const auto& each : cases) {
        pw_time time = TimeOf(48000);
        time.rate = each.rate;
        time.queued = each.queued;
        time.buffered = each.buffered;
        time.delay = each.delay;

        EXPECT_EQ(ReportOf(time, each.written, now).playedFrames, each.played) << each.what;
    }
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
