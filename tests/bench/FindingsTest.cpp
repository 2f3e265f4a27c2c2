// What the benchmarks say of answers and of sound that are known.
#include "Findings.h"

#include "SinkLogFixture.h"

#include <cmath>
#include <string>

using bench::Answer;
using bench::Events;
using bench::GroundTruth;

static constexpr std::int64_t silence = 2000; // before the music

namespace {

class FindingsTest : public SinkLogTest {
protected:
    static double MsOf(std::int64_t frames) {
        return static_cast<double>(frames) * 1000.0 / bench::rateHz;
    }

    // Once a millisecond, from frame @p from of the sink to @p to: what is heard, and @p offMs
    // more.
    static void Ask(const GroundTruth& heard, std::int64_t from, std::int64_t to, double offMs,
                    std::vector<Answer>& answers) {
        for (std::int64_t ns = NsOf(from); ns < NsOf(to); ns += 1'000'000) {
            answers.push_back({ns, heard.At(ns).musicMs + offMs});
        }
    }

    GroundTruth PlayFromTheBeginning(std::ptrdiff_t to) {
        PlayZeros(silence);
        Play(0, to);
        return Read();
    }

    Events Read(const std::string& lines) {
        std::ofstream(folder.Path("events")) << lines;
        return Events(folder.Path("events"));
    }
    using SinkLogTest::Read;

    // That something changed at that frame of the sink, and the server was back at another.
    Events ChangeAndBack(std::int64_t change, std::int64_t back) {
        return Read("change " + std::to_string(NsOf(change)) + "\nback " +
                    std::to_string(NsOf(back)) + "\n");
    }
};

} // namespace

TEST_F(FindingsTest, ErrorsAreSpreadByRank) {
    bench::Errors errors;
    EXPECT_TRUE(std::isnan(errors.Percentile(0.5)));
    for (int i = 100; i >= 0; --i) {
        errors.Add(i - 50);
    }

    EXPECT_EQ(errors.Count(), 101U);
    EXPECT_EQ(errors.Percentile(0.0), -50.0);
    EXPECT_EQ(errors.Percentile(0.01), -49.0);
    EXPECT_EQ(errors.Percentile(0.5), 0.0);
    EXPECT_EQ(errors.Percentile(1.0), 50.0);
}

TEST_F(FindingsTest, PositionsOfAllStartsAreTakenTogether) {
    const GroundTruth heard = PlayFromTheBeginning(60'000);
    bench::Positions positions;

    for (const double offMs : {0.5, -1.5}) {
        std::vector<Answer> answers;
        Ask(heard, 4000, 60'000, offMs, answers);
        positions.Add(heard, answers);
    }

    EXPECT_NEAR(positions.All().Percentile(0.25), -1.5, 0.001);
    EXPECT_NEAR(positions.All().Percentile(0.75), 0.5, 0.001);
    EXPECT_NEAR(positions.Worst(), -1.5, 0.001);
    EXPECT_NEAR(positions.WorstMedian(), -1.5, 0.001);
    EXPECT_NEAR(positions.WorstOfBeginning(), -1.5, 0.001);
    EXPECT_EQ(positions.BackSteps(), 0);
    EXPECT_EQ(positions.SamePercent(), 0.0);
    EXPECT_EQ(positions.LostFrames(), 0);
    EXPECT_EQ(positions.UnseenStarts(), 0);
}

TEST_F(FindingsTest, AnswersThatStepBackOrStandStillAreCounted) {
    const GroundTruth heard = PlayFromTheBeginning(60'000);
    std::vector<Answer> answers;
    Ask(heard, 4000, 30'000, 0.0, answers);
    answers[100].musicMs = answers[99].musicMs;
    answers[200].musicMs = answers[199].musicMs - 0.5;

    bench::Positions positions;
    positions.Add(heard, answers);

    EXPECT_EQ(positions.BackSteps(), 1);
    EXPECT_NEAR(positions.SamePercent(), 100.0 / static_cast<double>(answers.size() - 1), 0.001);
    EXPECT_NEAR(positions.Worst(), -1.5, 0.001);
    EXPECT_NEAR(positions.WorstMedian(), 0.0, 0.001);
}

TEST_F(FindingsTest, ABeginningThatIsNotHeardIsLost) {
    PlayZeros(silence);
    Play(700, 60'000);
    bench::Positions positions;

    positions.Add(Read(), {});

    EXPECT_EQ(positions.LostFrames(), 700);
    EXPECT_TRUE(std::isnan(positions.SamePercent()));
}

TEST_F(FindingsTest, ABeginningThatIsNotInTheLogIsUnseen) {
    Play(700, 60'000);
    bench::Positions positions;

    positions.Add(Read(), {});

    EXPECT_EQ(positions.UnseenStarts(), 1);
    EXPECT_EQ(positions.LostFrames(), 0);
}

// In step half a second after the server was back, and late by 0.2 ms from then on.
TEST_F(FindingsTest, AnswersAreInStepFromTheLastOnThatWasOff) {
    const GroundTruth heard = PlayFromTheBeginning(130'000);
    const std::int64_t back = 20'000;
    std::vector<Answer> answers;
    Ask(heard, 4000, back + 22'050, 5.0, answers);
    Ask(heard, back + 22'050, 130'000, -0.2, answers);
    const Events events = ChangeAndBack(10'000, back);

    const auto found = bench::FindAnswersAfterChange(heard, answers, events);

    EXPECT_NEAR(found.offMs, 500.0, 1.5);
    EXPECT_NEAR(found.settled.Percentile(0.0), -0.2, 0.001);
    EXPECT_NEAR(found.settled.Percentile(1.0), -0.2, 0.001);
    EXPECT_EQ(found.backSteps, 1);
}

TEST_F(FindingsTest, OneLateAnswerIsNotOutOfStep) {
    const GroundTruth heard = PlayFromTheBeginning(60'000);
    std::vector<Answer> answers;
    Ask(heard, 4000, 60'000, 0.0, answers);
    for (std::size_t i = 600; i < 609; ++i) {
        answers[i].musicMs -= 4.0;
    }

    EXPECT_EQ(bench::FindAnswersAfterChange(heard, answers, Read("")).offMs, 0.0);
}

TEST_F(FindingsTest, WhatIsHeardLaterIsHeldToWhatLeftBefore) {
    const GroundTruth heard = PlayFromTheBeginning(130'000);
    std::vector<Answer> answers;
    for (std::int64_t ns = NsOf(40'000); ns < NsOf(120'000); ns += 1'000'000) {
        const std::int64_t latencyNs = ns < NsOf(60'000) ? 200'000'000 : 350'500'000;
        answers.push_back({ns, heard.At(ns - latencyNs).musicMs});
    }
    const Events events = Read("latency 0 200\nlatency " + std::to_string(NsOf(60'000)) +
                               " 350.5\nback " + std::to_string(NsOf(2000) - 2'000'000'000) + "\n");

    const auto found = bench::FindAnswersAfterChange(heard, answers, events);

    EXPECT_NEAR(found.settled.Percentile(0.0), 0.0, 0.001);
    EXPECT_NEAR(found.settled.Percentile(1.0), 0.0, 0.001);
    EXPECT_EQ(found.settled.Count(), answers.size());
}

TEST_F(FindingsTest, SoundAfterAChangeIsAccountedFor) {
    PlayZeros(silence);
    Play(0, 20'000);
    PlayZeros(4410);
    Play(20'441, 40'000); // 10 ms are missing
    Play(39'118, 60'000); // and 20 ms are repeated
    const Events events = ChangeAndBack(21'000, 24'205);

    const auto found = bench::FindSoundAfterChange(Read(), events);

    EXPECT_NEAR(found.missing, 10.0, 0.05);
    EXPECT_NEAR(found.repeated, 20.0, 0.05);
    EXPECT_NEAR(found.silent, 100.0, 0.05);
    EXPECT_NEAR(found.resumed, 50.0, 0.05);
}

TEST_F(FindingsTest, SoundThatDoesNotComeBackIsNoNumber) {
    PlayZeros(silence);
    Play(0, 20'000);
    const Events events = Read("back " + std::to_string(NsOf(40'000)) + "\n");

    const auto found = bench::FindSoundAfterChange(Read(), events);

    EXPECT_TRUE(std::isnan(found.missing));
    EXPECT_TRUE(std::isnan(found.resumed));
}

TEST_F(FindingsTest, MusicThatRunsThroughHasNoDropout) {
    PlayZeros(silence);
    Play(0, std::ssize(music->Frames()));

    EXPECT_EQ(bench::FindDropouts(Read(), *music).count, 0);
}

TEST_F(FindingsTest, EachBreakAndAnEndTooEarlyIsADropout) {
    const std::int64_t end = std::ssize(music->Frames());
    PlayZeros(silence);
    Play(0, 30'000);
    PlayZeros(441);
    Play(30'000, 60'000);
    PlayZeros(882);
    Play(60'882, end - 20'000);

    const auto found = bench::FindDropouts(Read(), *music);

    EXPECT_EQ(found.count, 3);
    EXPECT_NEAR(found.heardMs, MsOf(end - 20'000), 0.05);
    EXPECT_GT(found.lostMs, 30.0 + MsOf(10'000));
    EXPECT_LT(found.lostMs, 30.05 + MsOf(20'000));
}

TEST_F(FindingsTest, MusicThatWasNeverHeardIsADropout) {
    PlayZeros(50'000);

    EXPECT_EQ(bench::FindDropouts(Read(), *music).count, 1);
}

TEST_F(FindingsTest, WhatTheLogDoesNotShowIsNoDropout) {
    PlayZeros(silence);
    Play(0, std::ssize(music->Frames()));
    WriteBlock(0, 40'000);
    WriteBlock(45'000, std::ssize(sound) - 45'000);

    EXPECT_EQ(bench::FindDropouts(GroundTruth(folder.Path("sink"), *music), *music).count, 0);
}
