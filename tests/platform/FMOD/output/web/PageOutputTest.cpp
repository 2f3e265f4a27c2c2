// The output of a page on a browser that does what the test says.
#include "PageOutput.h"

#include "BrowserAudio.h"
#include "ScriptedBrowser.h"
#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

using browser::Context;
using browser::ms;
using devices::ExpectNear;
using sound::PageOutput;

namespace {

class PageOutputTest : public testing::Test {
protected:
    PageOutputTest() { browser::Reset(); }

    void Start() { output.emplace(counter.AsSource()); }

    // A page on which the viewer has pressed a button a while ago.
    void StartRunning() {
        context.openState = sound::audioRunning;
        Start();
        Live(2000);
    }

    // For @p forMs: the clock is asked every 5 ms, and has a turn every @p periodMs.
    void Live(std::int64_t forMs, std::int64_t periodMs = 50) {
        for (std::int64_t t = 0; t < forMs; t += 5) {
            if (t % periodMs == 0) {
                output->Turn();
            }
            Ask();
            context.Pass(5 * ms);
        }
    }

    // The page's thread is busy; after that it is the timer's turn.
    void Stall(std::int64_t forMs) {
        context.Pass(forMs * ms);
        output->Turn();
        Ask();
    }

    std::int64_t Ask() {
        const std::int64_t answer = output->HeardFrames();
        EXPECT_GE(answer, latest);
        latest = answer;
        return answer;
    }

    // What is heard is what the clock says, after a fade.
    void ExpectTrueClock(std::int64_t tolerance = 2) {
        ASSERT_TRUE(output->IsSounding());
        ExpectNear(Ask(), context.Heard(), tolerance);
    }

    // All of the music from @p first on is heard once, in its order; returns the gaps in it, in
    // frames of the context. (The frames of a fade-in are not recognised.)
    std::vector<std::int64_t> Gaps(std::int64_t first) const {
        std::vector<std::int64_t> gaps;
        std::int64_t next = first;
        std::int64_t zeros = 0;
        for (const std::int64_t frame : context.played) {
            if (frame < first) {
                ++zeros;
                continue;
            }
            EXPECT_EQ(frame, next);
            if (frame != next) {
                break;
            }
            if (zeros > 0 && frame > first) {
                gaps.push_back(zeros);
            }
            zeros = 0;
            ++next;
        }
        EXPECT_GT(next, first);
        return gaps;
    }

    devices::Counter counter;
    Context& context = browser::Current();
    std::optional<PageOutput> output;
    std::int64_t latest = 0;
};

const std::vector<std::int64_t> none;

} // namespace

TEST_F(PageOutputTest, IsSilentInRealTimeWithoutAContext) {
    context.mayOpen = false;
    Start();
    output->Await();
    for (int i = 1; i <= 100; ++i) {
        context.Pass(20 * ms);
        EXPECT_EQ(Ask(), i * 882);
        EXPECT_EQ(counter.next, i * 882);
    }
    EXPECT_FALSE(output->IsSounding());
}

TEST_F(PageOutputTest, OpensAContextOnceASecondUntilThereIsOne) {
    context.mayOpen = false;
    Start();
    Live(3100);
    EXPECT_EQ(context.opened, 4);

    context.mayOpen = true;
    context.openState = sound::audioRunning;
    Live(3000);

    EXPECT_EQ(context.opened, 5);
}

TEST_F(PageOutputTest, BeginsTheMusicWithItsFirstFrame) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;

    Live(3000);

    EXPECT_EQ(Gaps(silent + 1), none);
    ExpectTrueClock();
}

TEST_F(PageOutputTest, BeginsTheMusicSoon) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;

    Live(50 + 50 + 50 + 200 + 10); // until a turn, a burst, the lead, the latency

    EXPECT_GT(Ask(), silent);
}

TEST_F(PageOutputTest, WaitsWithTheMusicForAThreadThatIsBusyAtItsBeginning) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;
    context.Pass(1000 * ms);
    EXPECT_EQ(Ask(), silent);

    Stall(0);
    Live(100);
    Stall(1500);
    Live(2000);

    EXPECT_EQ(Gaps(silent + 1).size(), 1U);
    ExpectTrueClock();
}

TEST_F(PageOutputTest, HasNoGapBesideAThreadThatIsOftenBusy) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;
    for (int i = 0; i < 10; ++i) {
        Live(1995);
        Stall(300);
        ExpectTrueClock();
    }
    EXPECT_EQ(Gaps(silent + 1), none);
}

TEST_F(PageOutputTest, HasNoGapInTheBackgroundWhereOnlyTheEndsOfChunksAreOnTime) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;
    Live(500);
    for (int i = 0; i < 5000; ++i) {
        const auto over = [this](std::int64_t end) { return end <= context.nowNs + ms; };
        const bool ended = std::any_of(context.ends.begin(), context.ends.end(), over);
        context.Pass(2 * ms);
        if (ended) {
            output->Turn();
        }
    }
    EXPECT_EQ(Gaps(silent + 1), none);
    ExpectTrueClock();
}

TEST_F(PageOutputTest, HaltsTheClockInAGapAndLeavesNothingOut) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;
    Live(2000);

    Stall(2000);

    Live(1000);
    const auto gaps = Gaps(silent + 1);
    ASSERT_EQ(gaps.size(), 1U);
    ExpectTrueClock();
    ExpectNear(gaps[0], sound::FramesIn(1500 * ms), sound::FramesIn(200 * ms));
}

TEST_F(PageOutputTest, HandsOverAgainWhatItWasKeptFromHandingOverInTime) {
    StartRunning();
    output->Await();
    const std::int64_t silent = counter.next;
    context.lossNs = 170 * ms;

    Live(2000);

    EXPECT_EQ(Gaps(silent + 1), none);
    ExpectTrueClock();
}

TEST_F(PageOutputTest, HoldsTheMusicForAContextThatIsStarting) {
    context.openState = sound::audioStarting;
    Start();
    Live(1000);
    output->Await();
    const std::int64_t silent = counter.next;
    Live(500);
    EXPECT_EQ(Ask(), silent);

    context.Run();
    Live(2000);

    EXPECT_EQ(Gaps(silent + 1), none);
    ExpectTrueClock();
}

TEST_F(PageOutputTest, DoesNotHoldTheMusicForLongerThanASecond) {
    context.openState = sound::audioStarting;
    Start();
    output->Await();
    Live(3000);

    ExpectNear(Ask(), sound::FramesIn(2000 * ms), sound::FramesIn(60 * ms));
}

TEST_F(PageOutputTest, TakesOverInStepWhenTheContextRunsAtLast) {
    context.openState = sound::audioSuspended;
    Start();
    output->Await();
    const std::int64_t begin = context.nowNs;
    Live(3000);
    EXPECT_EQ(Ask(), sound::FramesIn(context.nowNs - begin));

    context.Run();
    Live(2000);

    ExpectTrueClock();
    ExpectNear(Ask(), sound::FramesIn(context.nowNs - begin), 4);
}

TEST_F(PageOutputTest, FadesInWhereTheMusicPlaysAlready) {
    context.openState = sound::audioSuspended;
    Start();
    output->Await();
    Live(1000);
    context.Run();
    Live(1000);

    const auto heard = std::find_if(context.played.begin(), context.played.end(),
                                    [](std::int64_t frame) { return frame != 0; });
    ASSERT_NE(heard, context.played.end());
    EXPECT_LT(*heard, 1000); // 1/512 of some 60,000
    EXPECT_EQ(heard[600], heard[601] - 1);
}

TEST_F(PageOutputTest, GoesOnInRealTimeWhileTheContextIsInterrupted) {
    StartRunning();
    output->Await();
    Live(2000);
    const std::int64_t before = Ask();
    const std::int64_t beforeNs = context.nowNs;

    context.Interrupt(sound::audioSuspended);
    Live(5000);
    EXPECT_FALSE(output->IsSounding());
    ExpectNear(Ask() - before, sound::FramesIn(context.nowNs - beforeNs), 4);

    context.Run();
    Live(2000);
    ExpectTrueClock();
    ExpectNear(Ask() - before, sound::FramesIn(context.nowNs - beforeNs), 8);
}

TEST_F(PageOutputTest, ReturnsAtOnceWithWhatHasNotBeenRenderedYet) {
    StartRunning();
    output->Await();
    Live(2000);
    context.Interrupt(sound::audioSuspended);
    Live(50);
    context.Run();
    Live(2000);

    ExpectTrueClock();
}

TEST_F(PageOutputTest, OpensAnotherContextForOneThatIsClosed) {
    StartRunning();
    output->Await();
    Live(2000);
    context.Interrupt(sound::audioNone);
    context.haltedAt = 0;
    context.played.clear();

    Live(4000);

    ExpectTrueClock();
}

TEST_F(PageOutputTest, GoesOnWithoutAContextThatStandsStillThoughItRuns) {
    StartRunning();
    output->Await();
    Live(2000);
    const std::int64_t before = Ask();
    const std::int64_t beforeNs = context.nowNs;
    context.haltedAt = context.RenderedFrames();
    context.standsStill = true;

    Live(3000);

    EXPECT_FALSE(output->IsSounding());
    ExpectNear(Ask() - before, sound::FramesIn(context.nowNs - beforeNs), 100);
}

TEST_F(PageOutputTest, TellsOnceThatNothingSounds) {
    context.openState = sound::audioSuspended;
    Start();
    testing::internal::CaptureStderr();
    Live(4000);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); // nothing is played
    output->Await();
    testing::internal::CaptureStderr();
    Live(1900);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    Live(5000);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "skovra: no sound device, playing silently\n");
}

TEST_F(PageOutputTest, NeverHandsOutMoreThanTheWayIsLong) {
    context.latencyFrames = 30'000;
    StartRunning();
    output->Await();
    for (int i = 0; i < 100; ++i) {
        Live(50);
        EXPECT_LT(counter.next - Ask(), sound::longestWay);
    }
    ExpectTrueClock();
}

TEST_F(PageOutputTest, ClosesItsContext) {
    StartRunning();

    output.reset();

    EXPECT_EQ(context.state, sound::audioNone);
}
