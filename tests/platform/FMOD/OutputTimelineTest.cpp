// One sequence of frames, played by silence and by devices in turn.
#include "OutputTimeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

using sound::DeviceFeed;
using sound::OutputTimeline;

namespace {

constexpr std::int64_t ms = 1'000'000; // in ns

// A source whose frames hold their own number plus one: 1, 2, 3, ... (0 is silence).
struct Counter {
    std::int64_t next = 0;

    static void Render(void* context, float* block, std::int32_t frames) noexcept {
        auto* self = static_cast<Counter*>(context);
        for (std::int32_t i = 0; i < frames; ++i) {
            ++self->next;
            *block++ = static_cast<float>(self->next);
            *block++ = static_cast<float>(self->next);
        }
    }
    static void Wait(void*, std::int32_t) noexcept {}

    sound::Source AsSource() { return {this, Render, Wait}; }
};

// A device that has been started, with @p latencyFrames always in its buffer, played in real time
// from @p startNs on.
struct Device {
    Device(OutputTimeline& timeline, std::int64_t fillNs, std::int64_t beginNs,
           std::int32_t latencyFrames)
        : feed(timeline), startNs(beginNs) {
        Ask(latencyFrames, fillNs);
    }

    std::int64_t Played(std::int64_t nowNs) const {
        return std::max<std::int64_t>(sound::FramesIn(nowNs - startNs), 0);
    }

    bool Ask(std::int32_t frames, std::int64_t nowNs) {
        std::vector<float> block(2 * static_cast<std::size_t>(frames), -1.0F);
        const bool wanted = feed.Render(block.data(), frames, Played(nowNs) + misjudged, nowNs);
        for (std::size_t i = 0; i < block.size(); i += 2) {
            given.push_back(static_cast<std::int64_t>(block[i]));
        }
        return wanted;
    }

    // Asks for 10 ms every 10 ms.
    void RunUntil(std::int64_t& nowNs, std::int64_t endNs) {
        for (; nowNs < endNs; nowNs += 10 * ms) {
            Ask(441, nowNs);
        }
    }

    // The number, plus one, of the source's frame that leaves the loudspeaker; 0: silence.
    std::int64_t Sounding(std::int64_t nowNs) const {
        return given.at(static_cast<std::size_t>(Played(nowNs)));
    }

    DeviceFeed feed;
    std::int64_t startNs;
    std::int64_t misjudged = 0; ///< frames by which what it says is off
    std::vector<std::int64_t> given;
};

} // namespace

TEST(OutputTimeline, PlaysSilenceInRealTimeToTheFrame) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 5000 * ms);

    for (std::int64_t now = 0; now <= 3600'000; now += 20) {
        timeline.AdvanceSilence((5000 + now) * ms);
        ASSERT_EQ(timeline.HeardFrames((5000 + now) * ms), now * 441 / 10);
    }
    EXPECT_FALSE(timeline.IsSounding());
}

TEST(OutputTimeline, RendersSilenceATenthOfASecondAhead) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    EXPECT_EQ(counter.next, 4410);

    timeline.AdvanceSilence(20 * ms);

    EXPECT_EQ(counter.next, 4410 + 882);
}

TEST(OutputTimeline, NeverHearsMoreThanWasRendered) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);

    EXPECT_EQ(timeline.HeardFrames(700 * ms), 4410);
}

TEST(OutputTimeline, FeedsADeviceZerosUntilItsClockMoves) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    Device device(timeline, 0, 1900 * ms, 4410); // a device that plays nothing for 1.9 s

    for (std::int64_t now = 100 * ms; now < 1900 * ms; now += 100 * ms) {
        timeline.AdvanceSilence(now);
        EXPECT_TRUE(device.Ask(1, now));
    }

    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_FALSE(device.feed.HasFailed());
    EXPECT_TRUE(std::all_of(device.given.begin(), device.given.end(),
                            [](std::int64_t frame) { return frame == 0; }));
}

TEST(OutputTimeline, KeepsTimeBesideADeviceThatMisjudgesItForASecond) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);
    ASSERT_TRUE(timeline.IsSounding());

    device.misjudged = 220; // 5 ms
    device.RunUntil(now, 2000 * ms);

    EXPECT_NEAR(static_cast<double>(timeline.HeardFrames(now)),
                static_cast<double>(sound::FramesIn(now)), 44.0);
}

TEST(OutputTimeline, HandsOverToADeviceInStep) {
    for (const std::int32_t latencyFrames : {500, 4410, 15000}) {
        Counter counter;
        OutputTimeline timeline(counter.AsSource(), 0);
        std::int64_t now = 1000 * ms;
        timeline.AdvanceSilence(now);
        Device device(timeline, now, now + 1 * ms, latencyFrames);
        for (; !timeline.IsSounding() && now < 1200 * ms; now += 10 * ms) {
            timeline.AdvanceSilence(now);
            device.Ask(441, now);
        }
        ASSERT_TRUE(timeline.IsSounding()) << latencyFrames;

        // From when the last zeros are played on, what leaves the loudspeaker is what is said to
        // be heard, and that has gone on in real time.
        std::int64_t compared = 0;
        for (; now < 3000 * ms; now += 10 * ms) {
            device.Ask(441, now);
            EXPECT_NEAR(static_cast<double>(timeline.HeardFrames(now)),
                        static_cast<double>(sound::FramesIn(now)), 1.0);
            if (const std::int64_t sounding = device.Sounding(now); sounding != 0) {
                EXPECT_NEAR(static_cast<double>(sounding - 1),
                            static_cast<double>(timeline.HeardFrames(now)), 1.0);
                ++compared;
            }
        }
        EXPECT_GT(compared, 100) << latencyFrames;
    }
}

TEST(OutputTimeline, LeavesOutNoFrameOnceADeviceSounds) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
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

TEST(OutputTimeline, GoesOnSilentlyWhenTheDeviceReportsAnError) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
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

TEST(OutputTimeline, GoesOnSilentlyWhenTheDeviceAsksForNothingAnyMore) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    // It has 100 ms in hand, and as much again to come back.
    std::int64_t last = timeline.HeardFrames(now);
    std::int64_t stoppedMs = 0;
    while (!timeline.FallSilentIfLost(now + stoppedMs * ms) && stoppedMs < 1000) {
        stoppedMs += 5;
    }
    EXPECT_GE(stoppedMs, 150);
    EXPECT_LE(stoppedMs, 210);

    // No jump: each 10 ms bring 10 ms, from where the clock had come to a halt.
    now += stoppedMs * ms;
    EXPECT_EQ(timeline.HeardFrames(now), counter.next);
    EXPECT_GE(timeline.HeardFrames(now), last);
    last = timeline.HeardFrames(now);
    for (std::int64_t later = 10; later < 500; later += 10) {
        timeline.AdvanceSilence(now + later * ms);
        EXPECT_EQ(timeline.HeardFrames(now + later * ms), last + later * 441 / 10);
    }
}

TEST(OutputTimeline, TellsWhenADeviceThatAsksForNothingMoreIsLost) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    EXPECT_EQ(timeline.PatienceNs(now), 0);
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    const std::int64_t lostNs = now + timeline.PatienceNs(now);

    EXPECT_FALSE(timeline.FallSilentIfLost(lostNs - ms));
    EXPECT_LT(timeline.PatienceNs(lostNs - ms), 2 * ms);
    EXPECT_EQ(timeline.PatienceNs(lostNs + ms), 0);
    EXPECT_TRUE(timeline.FallSilentIfLost(lostNs));
    EXPECT_EQ(timeline.PatienceNs(lostNs), 0);
}

TEST(OutputTimeline, GivesALostDeviceNothingMore) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    device.feed.Fail();
    ASSERT_TRUE(timeline.FallSilentIfLost(now));

    EXPECT_FALSE(device.Ask(441, now));
    EXPECT_EQ(device.given.back(), 0);
}

TEST(OutputTimeline, PutsUpWithADeviceThatIsLateForAMoment) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);

    now += 90 * ms;

    EXPECT_FALSE(timeline.FallSilentIfLost(now));
    EXPECT_TRUE(device.Ask(4410, now));
    EXPECT_TRUE(timeline.IsSounding());
}

TEST(OutputTimeline, ReturnsToADeviceInStepAfterSilence) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
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
    EXPECT_NEAR(static_cast<double>(last), static_cast<double>(sound::FramesIn(now - 10 * ms)),
                2.0);
    EXPECT_NEAR(static_cast<double>(second.Sounding(now - 10 * ms) - 1), static_cast<double>(last),
                1.0);
}

TEST(OutputTimeline, FeedsASecondDeviceZerosWhileTheFirstPlays) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
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

TEST(OutputTimeline, RefusesADeviceThatTakesAnyAmount) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    DeviceFeed feed(timeline);
    std::vector<float> block(std::size_t{2} * 4410);

    // It "plays" all it gets at once, 12000 times too fast.
    std::int64_t taken = 0;
    std::int64_t now = 0;
    while (feed.Render(block.data(), 4410, taken, now) && now < 100 * ms) {
        taken += 4410;
        now += ms / 100;
    }

    EXPECT_TRUE(feed.HasFailed());
    EXPECT_LT(taken, 44100);
    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_EQ(counter.next, 4410); // none of the music was given to it
}

TEST(OutputTimeline, LeavesADeviceThatBeginsToRunAway) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
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

TEST(OutputTimeline, KeepsADeviceWhoseRateIsALittleOff) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    DeviceFeed feed(timeline);
    std::vector<float> block(std::size_t{2} * 445);
    std::int64_t handed = 4410;
    feed.Render(std::vector<float>(std::size_t{2} * 4410).data(), 4410, 0, 0);

    // Almost one per cent fast, for ten minutes.
    std::int64_t now = 10 * ms;
    while (now < 600'000 * ms && feed.Render(block.data(), 445, handed - 4410, now)) {
        handed += 445;
        now += 10 * ms;
    }

    EXPECT_FALSE(feed.HasFailed());
    EXPECT_TRUE(timeline.IsSounding());
}

TEST(OutputTimeline, TrustsNoDeviceThatCannotTellItsPosition) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    DeviceFeed feed(timeline);
    std::vector<float> block(std::size_t{2} * 441);

    for (std::int64_t now = 0; now < 1000 * ms; now += 10 * ms) {
        EXPECT_TRUE(feed.Render(block.data(), 441, -1, now));
    }

    EXPECT_FALSE(timeline.IsSounding());
}

TEST(OutputTimeline, RunsOnWhileTheDeviceCannotTellItsPosition) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 1000 * ms);
    std::vector<float> block(std::size_t{2} * 441);

    for (const std::int64_t end = now + 1000 * ms; now < end; now += 10 * ms) {
        device.feed.Render(block.data(), 441, -1, now);
    }

    EXPECT_TRUE(timeline.IsSounding());
    EXPECT_NEAR(static_cast<double>(timeline.HeardFrames(now)),
                static_cast<double>(sound::FramesIn(now)), 2.0);
}

TEST(OutputTimeline, FallsSilentWhenItsDeviceIsForgotten) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    const std::int64_t before = timeline.HeardFrames(now);

    timeline.Forget(device.feed, now);

    EXPECT_FALSE(timeline.IsSounding());
    EXPECT_EQ(timeline.HeardFrames(now), before);
}

TEST(OutputTimeline, AsksTheSourceForNothingOnceClosed) {
    Counter counter;
    OutputTimeline timeline(counter.AsSource(), 0);
    std::int64_t now = 0;
    Device device(timeline, now, now, 4410);
    device.RunUntil(now, 500 * ms);
    const std::int64_t rendered = counter.next;

    timeline.Close();
    device.Ask(441, now);
    timeline.Forget(device.feed, now);
    timeline.AdvanceSilence(now + 500 * ms);

    EXPECT_EQ(counter.next, rendered);
    EXPECT_EQ(device.given.back(), 0);
}
