// One sequence of frames, played by silence and by devices in turn.
#include "OutputTimeline.h"

#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

using devices::Counter;
using devices::Device;
using devices::ExpectNear;
using devices::ms;
using sound::DeviceFeed;
using sound::OutputTimeline;

using OutputTimelineTest = devices::TimelineFixture;

TEST_F(OutputTimelineTest, PlaysSilenceInRealTimeToTheFrame) {
    Counter source;
    OutputTimeline own(source.AsSource(), 5000 * ms);

    for (now = 0; now <= 3600'000; now += 20) {
        own.AdvanceSilence((5000 + now) * ms);
        ASSERT_EQ(own.HeardFrames((5000 + now) * ms), now * 441 / 10);
    }
    EXPECT_FALSE(own.IsSounding());
}

TEST_F(OutputTimelineTest, RendersSilenceATenthOfASecondAhead) {
    EXPECT_EQ(counter.next, 4410);

    timeline.AdvanceSilence(20 * ms);

    EXPECT_EQ(counter.next, 4410 + 882);
}

TEST_F(OutputTimelineTest, NeverHearsMoreThanWasRendered) {
    EXPECT_EQ(timeline.HeardFrames(700 * ms), 4410);
}

TEST_F(OutputTimelineTest, FeedsADeviceZerosUntilItsClockMoves) {
    Device device(timeline, 0, 1900 * ms, 4410); // a device that plays nothing for 1.9 s

    for (now = 100 * ms; now < 1900 * ms; now += 100 * ms) {
        timeline.AdvanceSilence(now);
        EXPECT_TRUE(device.Ask(1, now));
    }

    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_FALSE(device.feed.HasFailed());
    EXPECT_TRUE(std::all_of(device.given.begin(), device.given.end(),
                            [](std::int64_t frame) { return frame == 0; }));
}

TEST_F(OutputTimelineTest, KeepsTimeBesideADeviceThatMisjudgesItForASecond) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);
    ASSERT_TRUE(timeline.IsSounding());

    device.positionError = 220; // 5 ms
    device.RunUntil(now, 2000 * ms);

    ExpectNear(timeline.HeardFrames(now), sound::FramesIn(now), 44);
}

TEST_F(OutputTimelineTest, BelievesADeviceThatKnowsItsTimeAtOnce) {
    for (const std::int64_t moved : {-2205, -220, 220}) {
        Counter source;
        OutputTimeline own(source.AsSource(), 0);
        now = 0;
        Device device(own, now, now, 4410, Device::Reports::Exact);
        device.RunUntil(now, 1000 * ms);
        ASSERT_TRUE(own.IsSounding());

        device.positionError = moved; // this one is right
        device.Ask(441, now);

        const std::int64_t later = now + 100 * ms; // the clock never goes back
        ExpectNear(own.HeardFrames(later), sound::FramesIn(later) + moved, 1);
    }
}

// It asks for nothing until it plays, so nothing of the music is lost while it proves itself. Its
// reports are of a moment ago; for later ones the clock has been asked already.
TEST_F(OutputTimelineTest, HandsOverAtOnceAndInStepToADeviceThatKnowsItsTime) {
    for (const std::int64_t delayMs : {20, 200}) {
        Counter source;
        OutputTimeline own(source.AsSource(), 0);
        DeviceFeed feed(own, DeviceFeed::Reports::Exact);
        std::vector<float> block(std::size_t{2} * 441);
        const std::int64_t delay = delayMs * 441 / 10;
        std::int64_t given = 0;
        int compared = 0;
        for (now = 500 * ms; now < 1000 * ms; now += 10 * ms) {
            own.AdvanceSilence(now);
            ExpectNear(own.HeardFrames(now), sound::FramesIn(now), 1);

            const std::int64_t reportedNs = now - 8 * ms;
            feed.Render(block.data(), 441, given - delay, reportedNs);
            given += 441;

            EXPECT_TRUE(own.IsSounding());
            if (block[0] > 0.0F && ++compared > 2) { // the first two fade in
                EXPECT_NEAR(block[0] - 1.0F,
                            static_cast<double>(sound::FramesIn(reportedNs + delayMs * ms)), 1.0);
            }
        }
        EXPECT_GT(compared, 35) << delayMs; // after what silence had rendered ahead
    }
}

// What it will ask for is heard from when it was due; but a device that does not come is heard no
// more.
TEST_F(OutputTimelineTest, RunsOnThroughACycleThatComesALittleLate) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Exact);
    std::vector<float> block(std::size_t{2} * 882);
    std::int64_t given = 0;
    std::int64_t due = 500 * ms;
    timeline.AdvanceSilence(due);
    for (; due < 1000 * ms; due += 20 * ms) {
        for (now = due; now < due + 20 * ms; now += 1 * ms) {
            if (now == due + 8 * ms) {
                feed.Render(block.data(), 882, given, due);
                given += 882;
            }
            ExpectNear(timeline.HeardFrames(now), sound::FramesIn(now), 1);
        }
    }

    for (const std::int64_t late : {10 * ms, 40 * ms}) {
        ExpectNear(timeline.HeardFrames(due + late), sound::FramesIn(due + 10 * ms), 1);
    }
}

TEST_F(OutputTimelineTest, HandsOverToADeviceInStep) {
    for (const std::int32_t latencyFrames : {500, 4410, 15000}) {
        Counter source;
        OutputTimeline own(source.AsSource(), 0);
        now = 1000 * ms;
        own.AdvanceSilence(now);
        Device device(own, now, now + 1 * ms, latencyFrames);
        for (; !own.IsSounding() && now < 1200 * ms; now += 10 * ms) {
            own.AdvanceSilence(now);
            device.Ask(441, now);
        }
        ASSERT_TRUE(own.IsSounding()) << latencyFrames;

        // From when the last zeros are played on, what leaves the loudspeaker is what is said to
        // be heard, and that has gone on in real time.
        std::int64_t compared = 0;
        for (; now < 3000 * ms; now += 10 * ms) {
            device.Ask(441, now);
            ExpectNear(own.HeardFrames(now), sound::FramesIn(now), 1);
            if (const std::int64_t sounding = device.Sounding(now); sounding != 0) {
                ExpectNear(sounding - 1, own.HeardFrames(now), 1);
                ++compared;
            }
        }
        EXPECT_GT(compared, 100) << latencyFrames;
    }
}

TEST_F(OutputTimelineTest, LeavesOutNoFrameOnceADeviceSounds) {
    Device device(timeline, now, now, 4410);

    device.RunUntil(now, 2000 * ms);

    const auto first = std::find_if(device.given.begin(), device.given.end(),
                                    [](std::int64_t frame) { return frame != 0; });
    ASSERT_NE(first, device.given.end());
    std::int64_t expected = *first;
    for (auto frame = first; frame != device.given.end(); ++frame) {
        ASSERT_EQ(*frame, expected++);
    }
}

TEST_F(OutputTimelineTest, FadesInWhereADeviceTakesOverInTheMusic) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Exact);
    std::vector<float> block(std::size_t{2} * 8192);
    timeline.AdvanceSilence(500 * ms);

    feed.Render(block.data(), 8192, 0, 500 * ms);

    const auto first = static_cast<std::size_t>(
        std::find_if(block.begin(), block.end(), [](float sample) { return sample != 0.0F; }) -
        block.begin());
    const auto number =
        static_cast<double>(counter.next) - (8192.0 - static_cast<double>(first) / 2.0);
    for (std::size_t i = 0; first + 2 * i < block.size(); ++i) {
        const double gain = std::min(static_cast<double>(i + 1) / devices::fadeFrames, 1.0);
        const double frame = number + static_cast<double>(i) + 1.0;
        ASSERT_NEAR(block[first + 2 * i], gain * frame, 1e-3 * frame) << i;
        ASSERT_EQ(block[first + 2 * i], block[first + 2 * i + 1]) << i;
    }
}

TEST_F(OutputTimelineTest, DoesNotFadeInTheFirstFrameOfTheMusic) {
    float sample = 0.0F;
    const auto render = [](void* context, float* block, std::int32_t frames) noexcept {
        std::fill_n(block, 2 * static_cast<std::ptrdiff_t>(frames), *static_cast<float*>(context));
    };
    OutputTimeline own({&sample, render, nullptr}, now);
    DeviceFeed feed(own, DeviceFeed::Reports::Exact);
    std::vector<float> block(std::size_t{2} * 64);
    std::int64_t asked = 0;
    const auto ask = [&] {
        feed.Render(block.data(), 64, asked, sound::NsUntil(asked));
        asked += 64;
    };
    while (asked < 4410) { // what was rendered ahead
        ask();
    }
    ASSERT_TRUE(feed.HasPlayed());

    sample = 0.5F;
    ask();

    EXPECT_EQ(block, std::vector<float>(block.size(), 0.5F));
}

TEST_F(OutputTimelineTest, ReturnsToADeviceInStepAfterSilence) {
    Device first(timeline, now, now, 4410);
    first.RunUntil(now, 1000 * ms);
    first.feed.Fail();
    ASSERT_TRUE(timeline.FallSilentIfLost(now));
    std::int64_t last = timeline.HeardFrames(now);
    for (const std::int64_t end = now + 1000 * ms; now < end; now += 20 * ms) {
        timeline.AdvanceSilence(now);
    }

    Device second(timeline, now, now, 2205);
    for (const std::int64_t end = now + 1000 * ms; now < end; now += 10 * ms) {
        timeline.AdvanceSilence(now);
        second.Ask(441, now);
        EXPECT_GE(timeline.HeardFrames(now), last);
        last = timeline.HeardFrames(now);
    }

    EXPECT_TRUE(timeline.IsSounding());
    ExpectNear(last, sound::FramesIn(now - 10 * ms), 2);
    ExpectNear(second.Sounding(now - 10 * ms) - 1, last, 1);
}

TEST_F(OutputTimelineTest, FeedsASecondDeviceZerosWhileTheFirstPlays) {
    Device first(timeline, now, now, 4410);
    first.RunUntil(now, 500 * ms);
    ASSERT_TRUE(timeline.IsSounding());
    Device second(timeline, now, now, 8820);
    const std::int64_t before = counter.next;

    for (const std::int64_t end = now + 500 * ms; now < end; now += 10 * ms) {
        first.Ask(441, now);
        EXPECT_TRUE(second.Ask(441, now));
    }

    EXPECT_EQ(counter.next, before + std::int64_t{50} * 441);
    EXPECT_EQ(first.given.back(), counter.next);
    EXPECT_EQ(std::count(second.given.begin(), second.given.end(), 0),
              static_cast<std::ptrdiff_t>(second.given.size()));
}

// Ten devices that stop asking, found to be lost up to 100 ms late: nobody hears 4 s of the music,
// but the show ends when it should.
TEST_F(OutputTimelineTest, LosesNoTimeWithTheDevicesItLoses) {
    for (const auto reports : {Device::Reports::Estimated, Device::Reports::Exact}) {
        Counter source;
        OutputTimeline own(source.AsSource(), 0);
        now = 0;
        for (int lost = 0; lost < 10; ++lost) {
            own.AdvanceSilence(now);
            Device device(own, now, now, 2205, reports);
            for (const std::int64_t end = now + 700 * ms; now < end; now += 10 * ms) {
                own.AdvanceSilence(now);
                device.Ask(441, now);
            }
            ASSERT_TRUE(own.IsSounding()) << lost;
            while (!own.FallSilentIfLost(now)) {
                now += 100 * ms;
            }
        }
        own.AdvanceSilence(now);

        ExpectNear(own.HeardFrames(now), sound::FramesIn(now), 44);
        EXPECT_EQ(source.next, own.HeardFrames(now) + 4410);
    }
}

// The process was stopped, perhaps with its device: it goes on where it was.
TEST_F(OutputTimelineTest, DoesNotCatchUpWithAStopOfTheProcess) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    ASSERT_TRUE(timeline.FallSilentIfLost(now + 60'000 * ms));
    timeline.AdvanceSilence(now + 60'000 * ms);

    EXPECT_LT(timeline.HeardFrames(now + 60'000 * ms), sound::FramesIn(now + 700 * ms));
}
