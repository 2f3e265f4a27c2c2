// Devices that fail, are late, or say what cannot be.
#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

using devices::Device;
using devices::ExpectNear;
using devices::ms;
using sound::DeviceFeed;

using DeviceTrust = devices::TimelineFixture;

TEST_F(DeviceTrust, GoesOnSilentlyWhenTheDeviceReportsAnError) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);
    const std::int64_t before = timeline.HeardFrames(now);

    device.feed.Fail();

    EXPECT_TRUE(timeline.FallSilentIfLost(now));
    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_EQ(timeline.HeardFrames(now), before);
    for (std::int64_t later = 0; later < 500; later += 10) {
        timeline.AdvanceSilence(now + later * ms);
        EXPECT_EQ(timeline.HeardFrames(now + later * ms), before + later * 441 / 10);
    }
}

TEST_F(DeviceTrust, GoesOnSilentlyWhenTheDeviceAsksForNothingAnyMore) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    // It has 100 ms in hand, and as much again to come back.
    std::int64_t stoppedMs = 0;
    while (!timeline.FallSilentIfLost(now + stoppedMs * ms) && stoppedMs < 1000) {
        stoppedMs += 5;
    }
    EXPECT_GE(stoppedMs, 150);
    EXPECT_LE(stoppedMs, 210);

    // The clock had come to a halt meanwhile; it continues as if it had not.
    now += stoppedMs * ms;
    EXPECT_EQ(timeline.HeardFrames(now), counter.next);
    for (std::int64_t later = 0; later < 500; later += 10) {
        timeline.AdvanceSilence(now + later * ms);
        ExpectNear(timeline.HeardFrames(now + later * ms), sound::FramesIn(now + later * ms), 1);
    }
}

TEST_F(DeviceTrust, TellsWhenADeviceThatAsksForNothingMoreIsLost) {
    EXPECT_EQ(timeline.TimeUntilLostNs(now), 0);
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    const std::int64_t lostNs = now + timeline.TimeUntilLostNs(now);

    EXPECT_FALSE(timeline.FallSilentIfLost(lostNs - ms));
    EXPECT_LT(timeline.TimeUntilLostNs(lostNs - ms), 2 * ms);
    EXPECT_EQ(timeline.TimeUntilLostNs(lostNs + ms), 0);
    EXPECT_TRUE(timeline.FallSilentIfLost(lostNs));
    EXPECT_EQ(timeline.TimeUntilLostNs(lostNs), 0);
}

TEST_F(DeviceTrust, GivesALostDeviceNothingMore) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    device.feed.Fail();
    ASSERT_TRUE(timeline.FallSilentIfLost(now));

    EXPECT_FALSE(device.Ask(441, now));
    EXPECT_EQ(device.given.back(), 0);
}

TEST_F(DeviceTrust, PutsUpWithADeviceThatIsLateForAMoment) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    now += 90 * ms;

    EXPECT_FALSE(timeline.FallSilentIfLost(now));
    EXPECT_TRUE(device.Ask(4410, now));
    EXPECT_TRUE(timeline.IsSounding());
}

// A cycle in hand is less than a buffer, so it gets more time to be back.
TEST_F(DeviceTrust, PutsUpLongerWithADeviceThatKnowsItsTime) {
    Device device(timeline, now, now, 2048, Device::Reports::Exact);
    device.RunUntil(now, 1000 * ms);

    EXPECT_FALSE(timeline.FallSilentIfLost(now + 320 * ms));
    EXPECT_TRUE(timeline.FallSilentIfLost(now + 370 * ms));
}

TEST_F(DeviceTrust, RefusesADeviceThatTakesAnyAmount) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Estimated);
    std::vector<float> block(std::size_t{2} * 4410);

    // It "plays" all it gets at once, 12000 times too fast.
    std::int64_t taken = 0;
    while (feed.Render(block.data(), 4410, taken, now) && now < 100 * ms) {
        taken += 4410;
        now += ms / 100;
    }

    EXPECT_TRUE(feed.HasFailed());
    EXPECT_LT(taken, 44100);
    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_EQ(counter.next, 4410); // none of the music was given to it
}

TEST_F(DeviceTrust, LeavesADeviceThatBeginsToRunAway) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);
    ASSERT_TRUE(timeline.IsSounding());

    int asked = 0;
    while (device.Ask(4410, now) && asked < 100) {
        ++asked;
    }

    EXPECT_LT(asked, 20);
    EXPECT_TRUE(timeline.FallSilentIfLost(now));
}

TEST_F(DeviceTrust, KeepsADeviceWhoseRateIsALittleOff) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Estimated);
    std::vector<float> block(std::size_t{2} * 445);
    std::int64_t handed = 4410;
    feed.Render(std::vector<float>(std::size_t{2} * 4410).data(), 4410, 0, 0);

    // Almost one per cent fast, for ten minutes.
    now = 10 * ms;
    while (now < 600'000 * ms && feed.Render(block.data(), 445, handed - 4410, now)) {
        handed += 445;
        now += 10 * ms;
    }

    EXPECT_FALSE(feed.HasFailed());
    EXPECT_TRUE(timeline.IsSounding());
}

TEST_F(DeviceTrust, TrustsNoDeviceThatCannotTellItsPosition) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Estimated);
    std::vector<float> block(std::size_t{2} * 441);

    for (; now < 1000 * ms; now += 10 * ms) {
        EXPECT_TRUE(feed.Render(block.data(), 441, sound::unknownPosition, now));
    }

    EXPECT_FALSE(timeline.IsSounding());
}

TEST_F(DeviceTrust, RunsOnWhileTheDeviceCannotTellItsPosition) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);
    std::vector<float> block(std::size_t{2} * 441);

    for (const std::int64_t end = now + 1000 * ms; now < end; now += 10 * ms) {
        device.feed.Render(block.data(), 441, sound::unknownPosition, now);
    }

    EXPECT_TRUE(timeline.IsSounding());
    ExpectNear(timeline.HeardFrames(now), sound::FramesIn(now), 2);
}
