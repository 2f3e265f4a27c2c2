// The clock of an audio context, from reports good and bad.
#include "ContextClock.h"

#include "BrowserAudio.h"
#include "ScriptedBrowser.h"
#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

using browser::Context;
using browser::ms;
using browser::Stamps;
using devices::ExpectNear;
using sound::ContextClock;

namespace {

class ContextClockTest : public testing::Test {
protected:
    ContextClockTest() {
        browser::Reset();
        context.Run();
    }

    void Live(std::int64_t forMs, std::int64_t periodMs = 50) {
        for (std::int64_t t = 0; t < forMs; t += periodMs) {
            Report();
            context.Pass(periodMs * ms);
        }
    }

    void Report() {
        SkovraAudioReport report = {};
        SkovraAudioRead(&report);
        clock.Add(report);
    }

    void ExpectTrue(std::int64_t toleranceNs) {
        ASSERT_TRUE(clock.IsKnown());
        ExpectNear(clock.HeardAt(context.nowNs), context.HeardFrames(),
                   sound::FramesIn(toleranceNs) + 1);
    }

    Context& context = browser::Current();
    ContextClock clock;
};

} // namespace

TEST_F(ContextClockTest, IsKnownOnceSoundIsHeard) {
    Live(200);
    EXPECT_FALSE(clock.IsKnown());
    Live(200);
    ExpectTrue(0);
}

TEST_F(ContextClockTest, IsNotKnownFromStampsThatDisagree) {
    Live(100);
    for (int i = 0; i < 10; ++i) {
        context.stampErrorNs = i % 2 == 0 ? -30 * ms : 0;
        Live(50);
    }
    EXPECT_FALSE(clock.IsKnown());
}

TEST_F(ContextClockTest, BelievesStampsAtOnceDuringTheFirstSecond) {
    context.stampErrorNs = -9 * ms;
    Live(500);
    ExpectTrue(9 * ms);
    context.stampErrorNs = 0;
    Live(500);
    ExpectTrue(0);
}

TEST_F(ContextClockTest, CorrectsWhatTheFirstSecondGotWrong) {
    context.stampErrorNs = -7 * ms;
    Live(1500);
    context.stampErrorNs = 0;
    Live(1500);
    ExpectTrue(ms / 2);
}

TEST_F(ContextClockTest, IgnoresStampsThatAreFarOffForAMoment) {
    Live(3000);
    context.stampErrorNs = -80 * ms;
    Live(900);
    ExpectTrue(0);
    context.stampErrorNs = 0;
    Live(50);
    ExpectTrue(0);
}

TEST_F(ContextClockTest, IgnoresStampsThatAreFarOffAndDrift) {
    Live(3000);
    for (int i = 0; i < 100; ++i) {
        context.stampErrorNs = -80 * ms + i * ms / 2; // 10 ms a second
        Live(50);
    }
    ExpectTrue(0);
}

TEST_F(ContextClockTest, FollowsStampsThatKeepTheirDistance) {
    Live(3000);
    context.stampErrorNs = -80 * ms; // the sound is later by that from now on
    Live(2500);
    ExpectNear(clock.HeardAt(context.nowNs), context.HeardFrames() + sound::FramesIn(80 * ms), 44);
}

TEST_F(ContextClockTest, DoesWithoutStamps) {
    context.burstFrames = 128;
    context.stamps = Stamps::None;
    Live(3000, 20);
    ExpectTrue(3 * ms);
}

TEST_F(ContextClockTest, DoesWithoutStampsThatLeaveOutTheLatencyTwice) {
    context.burstFrames = 128;
    context.stamps = Stamps::Derived;
    Live(3000, 20);
    ExpectTrue(3 * ms);
}

TEST_F(ContextClockTest, WithoutStampsIgnoresWhatIsOldAfterTheThreadWasBusy) {
    context.burstFrames = 128;
    context.stamps = Stamps::Derived;
    Live(3000, 20);

    SkovraAudioReport old = {};
    SkovraAudioRead(&old);
    context.Pass(400 * ms);
    old.nowMs = SkovraAudioNow();
    old.stampMs = old.nowMs - old.latency * 1000.0;
    clock.Add(old);

    ExpectTrue(3 * ms);
}

TEST_F(ContextClockTest, IsNotKnownWhileTheContextRendersForNoDevice) {
    context.burstFrames = 128;
    context.stamps = Stamps::Derived;
    const std::int64_t latency = std::exchange(context.latencyFrames, 0);
    Live(3000, 20);
    EXPECT_FALSE(clock.IsKnown());

    context.latencyFrames = latency;
    Live(1000, 20);
    ExpectTrue(3 * ms);
}

TEST_F(ContextClockTest, KnowsHowFarTheContextMayHaveRendered) {
    Live(1000);
    for (int i = 0; i < 1000; ++i) {
        context.Pass(ms);
        if (i % 50 == 0) {
            Report();
        }
        EXPECT_GE(clock.RenderedBy(context.nowNs) + 44, context.RenderedFrames());
        EXPECT_LE(clock.RenderedBy(context.nowNs),
                  context.RenderedFrames() + context.burstFrames + 44);
    }
}

TEST_F(ContextClockTest, KnowsNothingOfAContextThatStandsStill) {
    Live(1000);
    context.haltedAt = context.RenderedFrames();
    context.standsStill = true;
    Live(400);
    EXPECT_TRUE(clock.IsKnown());
    Live(300);
    EXPECT_FALSE(clock.IsKnown());

    context.standsStill = false;
    context.Run();
    Live(500);
    ExpectTrue(0);
}

TEST_F(ContextClockTest, DoesNotTakeABusyThreadForAContextThatStandsStill) {
    Live(1000);
    SkovraAudioReport old = {};
    SkovraAudioRead(&old);
    context.Pass(2000 * ms);
    old.nowMs = SkovraAudioNow();
    clock.Add(old);

    EXPECT_TRUE(clock.IsKnown());
}
