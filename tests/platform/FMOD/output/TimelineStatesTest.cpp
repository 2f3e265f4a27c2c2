// Who may use the timeline in which state: the table in docs/sound.md.
#include "OneProcessor.h"
#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <thread>
#include <vector>

using devices::Device;
using devices::ms;
using sound::DeviceFeed;
using sound::unknownPosition;

using TimelineStates = devices::TimelineFixture;

TEST_F(TimelineStates, GivesItsDeviceWholeBlocksWhateverElseHappensMeanwhile) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    ASSERT_TRUE(timeline.IsSounding());
    Device other(timeline, now, now, 4410, Device::Reports::Exact);
    int blocks = 0;
    counter.whileRendering = [&] {
        ++blocks;
        ASSERT_TRUE(timeline.GetState().occupied);
        ASSERT_EQ(timeline.GetState().driver, &device.feed);
        timeline.AdvanceSilence(now);
        EXPECT_FALSE(timeline.FallSilentIfLost(now + 5000 * ms)); // it is asking just now
        other.feed.Render(std::vector<float>(882).data(), 441, unknownPosition, now);
        timeline.Forget(other.feed, now);
    };

    device.RunUntil(now, 1000 * ms);

    EXPECT_EQ(blocks, 50);
    EXPECT_FALSE(timeline.GetState().occupied);
    EXPECT_EQ(device.given.back(), counter.next);
    EXPECT_TRUE(std::is_sorted(device.given.begin(), device.given.end()));
    counter.whileRendering = [] {};
}

TEST_F(TimelineStates, LosesADeviceThatFailsDuringItsCallback) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    counter.whileRendering = [&] { device.feed.Fail(); };

    EXPECT_TRUE(device.Ask(441, now));

    EXPECT_EQ(device.given.back(), counter.next);
    EXPECT_TRUE(timeline.GetState().failed);
    EXPECT_FALSE(device.Ask(441, now));
    EXPECT_TRUE(timeline.FallSilentIfLost(now));
    EXPECT_FALSE(timeline.IsSounding());
    counter.whileRendering = [] {};
}

TEST_F(TimelineStates, LosesADeviceThatFailsWhileItTakesOver) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Exact);
    std::vector<float> block(std::size_t{2} * 8192);
    counter.whileRendering = [&] { feed.Fail(); };

    feed.Render(block.data(), 8192, 0, now);

    EXPECT_EQ(timeline.GetState().driver, &feed);
    EXPECT_TRUE(timeline.GetState().failed);
    EXPECT_TRUE(timeline.FallSilentIfLost(now));
    counter.whileRendering = [] {};
}

TEST_F(TimelineStates, LetsADeviceWaitWhileItRendersSilence) {
    DeviceFeed feed(timeline, DeviceFeed::Reports::Exact);
    std::vector<float> block(std::size_t{2} * 441);
    const std::vector<float> zeros(block.size(), 0.0F);
    counter.whileRendering = [&] {
        EXPECT_TRUE(feed.Render(block.data(), 441, 0, 500 * ms));
        EXPECT_EQ(block, zeros);
    };
    timeline.AdvanceSilence(500 * ms);
    counter.whileRendering = [] {};
    ASSERT_TRUE(feed.WasAsked());
    EXPECT_FALSE(feed.HasPlayed());

    EXPECT_TRUE(feed.Render(block.data(), 441, 441, 510 * ms));

    EXPECT_TRUE(feed.HasPlayed());
}

TEST_F(TimelineStates, FallsSilentWhenItsDeviceIsForgotten) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    const std::int64_t before = timeline.HeardFrames(now);

    timeline.Forget(device.feed, now);

    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_EQ(timeline.HeardFrames(now), before);
}

TEST_F(TimelineStates, AsksTheSourceForNothingOnceClosed) {
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    const std::int64_t rendered = counter.next;

    timeline.Close();
    device.Ask(441, now);
    timeline.Forget(device.feed, now);
    timeline.AdvanceSilence(now + 500 * ms);

    EXPECT_EQ(counter.next, rendered);
    EXPECT_EQ(device.given.back(), 0);
    EXPECT_TRUE(timeline.GetState().closed);
}

// On one processor a thread with real-time priority that waits in any other way would not let the
// one run that it waits for: until the kernel intervenes, after 950 ms.
TEST_F(TimelineStates, SleepsWhileItWaitsForTheThreadThatRenders) {
    std::atomic<bool> rendering{false};
    counter.whileRendering = [&] {
        rendering = true;
        processor::BusyFor(200 * ms);
    };

    const std::int64_t used =
        processor::UsedWaiting([&] { timeline.AdvanceSilence(10 * ms); },
                               [&] {
                                   while (!rendering) {
                                       std::this_thread::sleep_for(std::chrono::milliseconds(1));
                                   }
                                   timeline.Close();
                                   EXPECT_FALSE(timeline.GetState().occupied);
                               });

    EXPECT_LT(used, 100 * ms);
    counter.whileRendering = [] {};
}
