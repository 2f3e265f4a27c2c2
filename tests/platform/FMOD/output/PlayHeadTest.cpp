// What is heard between two reports of the device.
#include "PlayHead.h"

#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

using devices::ms;
using sound::PlayHead;

static constexpr std::int64_t unbounded = std::numeric_limits<std::int64_t>::max();

TEST(PlayHead, IsAtTheBeginningBeforeTheFirstReport) {
    PlayHead head;

    EXPECT_EQ(head.HeardFrames(5000 * ms, unbounded), 0);
}

TEST(PlayHead, RunsOnAtTheNominalRateAfterAReport) {
    PlayHead head;
    head.Publish(1000, 20 * ms);

    EXPECT_EQ(head.HeardFrames(20 * ms, unbounded), 1000);
    EXPECT_EQ(head.HeardFrames(30 * ms, unbounded), 1441);
    EXPECT_EQ(head.HeardFrames(1020 * ms, unbounded), 45100);
}

TEST(PlayHead, AnswersAnewEveryMillisecond) {
    PlayHead head;
    head.Publish(0, 0);

    std::int64_t last = -1;
    for (int now = 0; now < 100; ++now) {
        const std::int64_t heard = head.HeardFrames(now * ms, unbounded);
        EXPECT_GT(heard, last);
        last = heard;
    }
}

TEST(PlayHead, NeverPassesWhatWasHandedOut) {
    PlayHead head;
    head.Publish(1000, 0);

    EXPECT_EQ(head.HeardFrames(10 * ms, 1200), 1200);
    EXPECT_EQ(head.HeardFrames(500 * ms, 1200), 1200);
    EXPECT_EQ(head.HeardFrames(500 * ms, 2000), 2000);
}

TEST(PlayHead, StandsStillUntilALaterReportCatchesUp) {
    PlayHead head;
    head.Publish(0, 0);
    ASSERT_EQ(head.HeardFrames(100 * ms, unbounded), 4410);

    head.Publish(4000, 100 * ms);

    EXPECT_EQ(head.HeardFrames(100 * ms, unbounded), 4410);
    EXPECT_EQ(head.HeardFrames(105 * ms, unbounded), 4410);
    EXPECT_EQ(head.HeardFrames(110 * ms, unbounded), 4441);
}

TEST(PlayHead, FollowsADeviceThatRunsFast) {
    PlayHead head;
    head.Publish(0, 0);
    head.Publish(44200, 1000 * ms);

    EXPECT_EQ(head.HeardFrames(1000 * ms, unbounded), 44200);
}

TEST(PlayHead, SurvivesDaysOfPlaying) {
    constexpr std::int64_t hundredDays = 100LL * 24 * 3600;
    PlayHead head;
    head.Publish(0, 0);

    EXPECT_EQ(head.Extrapolate(hundredDays * 1000 * ms), hundredDays * 44100);
}

namespace {

// A device that reports every 25 ms; what it says may be off.
struct ReportingDevice {
    std::int64_t Heard(int ms) const {
        return static_cast<std::int64_t>(44.1 * ms * (1.0 + drift) + 44.1 * interruptedMs);
    }

    // Reports from @p fromMs on until @p toMs, each @p offMs off; answers how far the play head is
    // off then, in frames.
    double Report(int fromMs, int toMs, double offMs) {
        for (int now = fromMs; now <= toMs; now += 25) {
            head.Follow(Heard(now) + static_cast<std::int64_t>(44.1 * offMs), now * ms);
        }
        return static_cast<double>(head.Extrapolate(toMs * ms) - Heard(toMs));
    }

    PlayHead head;
    double drift = 0.0;
    double interruptedMs = 0.0;
};

} // namespace

TEST(PlayHead, IsWhereTheFirstReportSays) {
    ReportingDevice device;

    EXPECT_EQ(device.Report(1000, 1000, 0.0), 0.0);
}

TEST(PlayHead, StaysWithADeviceWhoseClockDrifts) {
    for (const double drift : {-3e-4, -1e-4, 1e-4, 3e-4}) {
        ReportingDevice device;
        device.drift = drift;

        for (int from = 0; from < 60'000; from += 1000) {
            EXPECT_NEAR(device.Report(from, from + 975, 0.0), 0.0, 2.0) << drift;
        }
    }
}

TEST(PlayHead, IsHardlyMovedByReportsThatAreOffForSeconds) {
    for (const double off : {-5.0, 5.0}) {
        ReportingDevice device;
        device.Report(0, 5000, 0.0);

        const double moved = device.Report(5025, 7000, off);

        EXPECT_GT(off * moved, 0.0);
        EXPECT_LT(std::abs(moved), 66.0); // 1.5 ms
    }
}

TEST(PlayHead, ComesRoundToReportsThatPersist) {
    ReportingDevice device;
    device.Report(0, 5000, 0.0);
    device.interruptedMs = -8.0;

    EXPECT_NEAR(device.Report(5025, 25'000, 0.0), 0.0, 2.0);
}

TEST(PlayHead, GoesWhereADeviceJumpsOnceThatIsConfirmed) {
    for (const double jump : {-50.0, 50.0}) {
        ReportingDevice device;
        device.Report(0, 5000, 0.0);
        device.interruptedMs = jump;

        EXPECT_GT(std::abs(device.Report(5025, 5250, 0.0)), 35.0 * 44.1) << jump;
        EXPECT_EQ(device.Report(5275, 5275, 0.0), 0.0) << jump;
    }
}

TEST(PlayHead, DoesNotFollowOneReportThatIsFarOff) {
    ReportingDevice device;
    device.Report(0, 5000, 0.0);
    device.Report(5025, 5025, -80.0);

    EXPECT_LT(std::abs(device.Report(5050, 5050, 0.0)), 66.0); // 1.5 ms
}

// A server that repeats, as if it were new, what was so at the latest cycle of its graph: what it
// says falls behind, more and more, until it is asked right after a cycle again.
TEST(PlayHead, IsNotMovedInJumpsByAPositionThatIsRepeated) {
    ReportingDevice device;
    device.Report(0, 5000, 0.0);

    double last = 0.0;
    for (int now = 5025; now < 25'000; now += 25) {
        const double stale = static_cast<double>(now % 3000) / 3000.0 * -46.0;
        const double off = device.Report(now, now, stale);
        EXPECT_LT(std::abs(off - last), 44.1) << now; // 1 ms
        last = off;
    }
    EXPECT_LT(std::abs(last), 46.0 * 44.1);
}

TEST(PlayHead, IsNotMovedFarByOneReportAfterASilence) {
    ReportingDevice device;
    device.Report(0, 5000, 0.0);

    EXPECT_LT(std::abs(device.Report(9000, 9000, 5.0)), 5.0);
}
