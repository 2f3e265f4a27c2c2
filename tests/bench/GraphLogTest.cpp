// What the benchmarks take for the truth in PipeWire's graph, where the music is resampled.
#include "SinkLogFixture.h"

#include <cmath>
#include <filesystem>
#include <numbers>

using bench::Frame;
using bench::GroundTruth;
using bench::Music;
using Kind = GroundTruth::Stretch::Kind;

static constexpr std::int64_t beginNs = 5'000'000'000;

namespace {

/// A graph of PipeWire's: cycles of a rate of their own, each one following the one before.
class GraphLogTest : public testing::Test {
protected:
    static constexpr std::int64_t cycleFrames = 1024;

    static void SetUpTestSuite() {
        music = MakeNoise(2, 0.9F, {"-b", "192", "-t", "--resample", "44.1", "--lowpass", "2"});
    }
    static void TearDownTestSuite() {
        delete music;
        music = nullptr;
    }

    // What is between the frames, by the theory: the sum of what all of them swing. Without high
    // notes few are enough.
    static Frame MusicAt(double place) {
        constexpr std::int64_t reach = 48;
        const auto whole = static_cast<std::int64_t>(std::floor(place));
        double left = 0.0;
        double right = 0.0;
        for (std::int64_t number = whole - reach; number <= whole + reach; ++number) {
            if (number < 0 || number >= std::ssize(music->Frames())) {
                continue;
            }
            const double x = std::numbers::pi * (place - static_cast<double>(number));
            const double swing = x == 0.0 ? 1.0 : std::sin(x) / x;
            const double fade = 0.5 + 0.5 * std::cos(x / (reach + 1));
            const Frame frame = music->Frames()[static_cast<std::size_t>(number)];
            left += static_cast<double>(frame.left) * swing * fade;
            right += static_cast<double>(frame.right) * swing * fade;
        }
        return {static_cast<float>(left), static_cast<float>(right)};
    }

    // Cycles until that many frames at @p rate have been played, the first of them the music's
    // @p place; what is before its beginning is silent.
    void Play(double place, std::int64_t count, std::int64_t rate, bool follows = false) {
        std::vector<Frame> cycle(cycleFrames);
        for (std::int64_t done = 0; done < count; done += cycleFrames) {
            for (Frame& frame : cycle) {
                frame = place < 0.0 ? Frame{} : MusicAt(place);
                place += static_cast<double>(bench::rateHz) / static_cast<double>(rate);
            }
            AppendBlock(folder.Path("sink"), {nowNs, rate, done > 0 || follows ? 1 : 0, 0}, cycle);
            nowNs += cycleFrames * 1'000'000'000 / rate;
        }
    }

    void BeginAnew() {
        std::filesystem::remove(folder.Path("sink"));
        nowNs = beginNs;
    }

    GroundTruth Read() { return GroundTruth(folder.Path("sink"), *music); }

    static double MsOf(double place) { return place * 1000.0 / bench::rateHz; }

    // @p place of the music is heard @p ms after the log's beginning.
    static void ExpectHeard(const GroundTruth& heard, double ms, double place) {
        const auto moment = heard.At(beginNs + std::llround(ms * 1e6));
        EXPECT_EQ(moment.kind, Kind::Runs) << "after " << ms << " ms";
        EXPECT_NEAR(moment.musicMs, MsOf(place), 0.001) << "after " << ms << " ms";
    }

    static double PlaceAfter(double ms) { return ms * bench::rateHz / 1000.0; }

    static Music* music;
    files::Folder folder;
    std::int64_t nowNs = beginNs;
};

Music* GraphLogTest::music = nullptr;

} // namespace

TEST_F(GraphLogTest, FindsResampledMusicToAFractionOfAFrame) {
    for (const double fraction : {0.0, 0.13, 0.37, 0.5, 0.74, 0.99}) {
        BeginAnew();
        const double place = -3000.0 + fraction;
        Play(place, 60'000, 48'000);

        const GroundTruth heard = Read();

        ExpectHeard(heard, 150.0, place + PlaceAfter(150.0));
        ExpectHeard(heard, 777.7, place + PlaceAfter(777.7));
        ExpectHeard(heard, 1200.0, place + PlaceAfter(1200.0));
        EXPECT_NEAR(static_cast<double>(heard.BeginNs() - beginNs) / 1e6, MsOf(-place), 0.02);
        EXPECT_GT(heard.EndNs(), nowNs - 1'000'000);
    }
}

TEST_F(GraphLogTest, FindsResampledMusicAtOtherRates) {
    for (const std::int64_t rate : {32'000, 96'000}) {
        BeginAnew();
        Play(-3000.4, 60'000, rate);

        ExpectHeard(Read(), 300.0, -3000.4 + PlaceAfter(300.0));
    }
}

TEST_F(GraphLogTest, SeesWhatOfResampledMusicIsMissing) {
    Play(-4000.0, 4352 + 2 * cycleFrames, 48'000);
    const double endMs = static_cast<double>(nowNs - beginNs) / 1e6;
    const double later = -4000.0 + PlaceAfter(endMs) + 3000.25;
    Play(later, 30'000, 48'000, true);

    const GroundTruth heard = Read();

    ExpectHeard(heard, endMs - 5.0, later - 3000.25 - PlaceAfter(5.0));
    ExpectHeard(heard, endMs + 60.0, later + PlaceAfter(60.0));
}

TEST_F(GraphLogTest, FollowsTheMusicWhenTheRateChanges) {
    Play(-2000.0, 40'960, 44'100);
    const double changeMs = static_cast<double>(nowNs - beginNs) / 1e6;
    const double place = -2000.0 + PlaceAfter(changeMs) + 0.3;
    Play(place, 40'960, 48'000);
    const double backMs = static_cast<double>(nowNs - beginNs) / 1e6;
    Play(std::round(place + PlaceAfter(backMs - changeMs)), 20'480, 44'100);

    const GroundTruth heard = Read();

    ExpectHeard(heard, changeMs - 100.0, -2000.0 + PlaceAfter(changeMs - 100.0));
    ExpectHeard(heard, changeMs + 100.0, place + PlaceAfter(100.0));
    ExpectHeard(heard, backMs + 100.0,
                std::round(place + PlaceAfter(backMs - changeMs)) + PlaceAfter(100.0));
}

TEST_F(GraphLogTest, LetsTheMusicStandStillWhileADriverIsLate) {
    Play(-2048.0, 20 * cycleFrames, 44'100);
    const double lateMs = static_cast<double>(nowNs - beginNs) / 1e6;
    nowNs += 3'000'000;
    Play(18.0 * cycleFrames, 20 * cycleFrames, 44'100, true);

    const GroundTruth heard = Read();

    EXPECT_EQ(heard.Stretches().size(), 2U);
    ExpectHeard(heard, lateMs - 1.0, 18.0 * cycleFrames - PlaceAfter(1.0));
    ExpectHeard(heard, lateMs + 2.0, 18.0 * cycleFrames);
    ExpectHeard(heard, lateMs + 4.0, 18.0 * cycleFrames + PlaceAfter(1.0));
}
