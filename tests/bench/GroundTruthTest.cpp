// What the benchmarks take for the truth: sink logs whose sound is known are read as such.
#include "SinkLogFixture.h"

using bench::GroundTruth;
using Kind = GroundTruth::Stretch::Kind;

using GroundTruthTest = SinkLogTest;

TEST_F(GroundTruthTest, FindsTheMusicFromItsFirstFrameOn) {
    PlayZeros(5000);
    Play(0, 60'000);
    PlayZeros(3000);

    const GroundTruth heard = Read();

    EXPECT_EQ(heard.BeginNs() / 1000, NsOf(5000) / 1000);
    EXPECT_EQ(heard.EndNs() / 1000, NsOf(65'000) / 1000);
    ExpectHeard(heard, 4000, 0);
    ExpectHeard(heard, 5441, 441);
    ExpectHeard(heard, 64'000, 59'000);
    ExpectHeard(heard, 67'000, 60'000);
}

TEST_F(GroundTruthTest, SeesTheMusicStandStillAndGoOn) {
    PlayZeros(2000);
    Play(0, 30'000);
    PlayZeros(700);
    Play(30'000, 60'000);

    const GroundTruth heard = Read();

    EXPECT_EQ(heard.At(NsOf(32'300)).kind, Kind::Silent);
    ExpectHeard(heard, 32'300, 30'000);
    ExpectHeard(heard, 40'000, 37'300);
}

TEST_F(GroundTruthTest, FindsMusicWhoseBeginningWasNotHeard) {
    PlayZeros(40'000);
    Play(30'000, 60'000);

    const GroundTruth heard = Read();

    EXPECT_EQ(heard.BeginNs() / 1000, NsOf(40'000) / 1000);
    ExpectHeard(heard, 39'000, 0);
    ExpectHeard(heard, 45'000, 35'000);
}

TEST_F(GroundTruthTest, SeesTheMusicJump) {
    PlayZeros(2000);
    Play(0, 30'000);
    Play(30'500, 50'000);
    Play(49'000, 80'000);

    const GroundTruth heard = Read();

    ExpectHeard(heard, 31'000, 29'000);
    ExpectHeard(heard, 40'000, 38'500);
    ExpectHeard(heard, 60'000, 57'500);
}

TEST_F(GroundTruthTest, FollowsTheMusicThroughAFade) {
    PlayZeros(2000);
    Play(0, 30'000);
    for (std::ptrdiff_t i = 0; i < 500; ++i) {
        Play(30'000 + i, 30'001 + i, 1.0F - static_cast<float>(i) / 500.0F);
    }
    PlayZeros(5000);
    for (std::ptrdiff_t i = 0; i < 500; ++i) {
        Play(30'500 + i, 30'501 + i, static_cast<float>(i) / 500.0F);
    }
    Play(31'000, 60'000);

    const GroundTruth heard = Read();

    ExpectHeard(heard, 32'400, 30'400);
    ExpectHeard(heard, 35'000, 30'500);
    ExpectHeard(heard, 37'700, 30'700);
    ExpectHeard(heard, 50'000, 43'000);
}

TEST_F(GroundTruthTest, TakesWhatWasRenderedAnewForWhatWasHeard) {
    Play(0, 60'000);
    WriteBlock(0, 30'000);
    WriteBlock(30'000, 2000);

    const GroundTruth heard = Read(20'000);

    ASSERT_EQ(heard.Stretches().size(), 1U);
    EXPECT_EQ(heard.Stretches().front().count, 60'000);
    ExpectHeard(heard, 19'000, 19'000);
    ExpectHeard(heard, 31'000, 31'000);
}

TEST_F(GroundTruthTest, SaysWhereItDoesNotKnow) {
    PlayZeros(2000);
    Play(0, 30'000);
    for (int i = 0; i < 5000; ++i) {
        sound.push_back({0.3F, -0.3F});
    }
    Play(30'000, 60'000);

    const GroundTruth heard = Read();

    EXPECT_EQ(heard.At(NsOf(34'000)).kind, Kind::Unknown);
    ExpectHeard(heard, 50'000, 43'000);
}

TEST_F(GroundTruthTest, SaysWhereTheLogSaysNothing) {
    PlayZeros(2000);
    Play(0, 30'000);
    const std::int64_t gap = std::ssize(sound);
    Play(30'000, 60'000);
    WriteBlock(0, gap);
    WriteBlock(gap + 5000, 25'000);

    const GroundTruth heard(folder.Path("sink"), *music);

    EXPECT_EQ(heard.At(NsOf(gap + 2000)).kind, Kind::Unseen);
    ExpectHeard(heard, gap - 10, 29'990);
    ExpectHeard(heard, gap + 5010, 35'010);
}

TEST_F(GroundTruthTest, KnowsWhetherTheLogShowsTheBeginning) {
    PlayZeros(100);
    Play(20'000, 60'000);

    EXPECT_TRUE(Read().IsBeginningSeen());
}

TEST_F(GroundTruthTest, KnowsWhenTheLogBeganInTheMusic) {
    Play(20'000, 60'000);

    const GroundTruth heard = Read();

    EXPECT_FALSE(heard.IsBeginningSeen());
    EXPECT_EQ(heard.At(NsOf(0) - 1'000'000).kind, Kind::Unseen);
    ExpectHeard(heard, 10'000, 30'000);
}
