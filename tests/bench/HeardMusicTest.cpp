// What the benchmarks take for the truth: sink logs whose sound is known are read as such.
#include "HeardMusic.h"
#include "Mp3Files.h"
#include "SinkLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <random>
#include <string>
#include <vector>

using bench::Frame;
using bench::HeardMusic;
using bench::Music;
using Kind = HeardMusic::Stretch::Kind;

namespace {

constexpr std::int64_t beginNs = 5'000'000'000;
constexpr std::int64_t blockFrames = 1102;

class HeardMusicTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> level(-0.4F, 0.4F);
        std::vector<float> noise(std::size_t{2} * 3 * bench::rateHz);
        std::generate(noise.begin(), noise.end(), [&] { return level(random); });
        files::Folder folder;
        files::EncodeMp3(folder.Path("noise.mp3"), noise, bench::rateHz, {"-b", "192", "-t"});
        music = new Music(folder.Path("noise.mp3"));
    }
    static void TearDownTestSuite() {
        delete music;
        music = nullptr;
    }

    void PlayZeros(std::size_t count) { sound.resize(sound.size() + count, Frame{}); }

    void Play(std::ptrdiff_t from, std::ptrdiff_t to, float gain = 1.0F) {
        std::transform(music->Frames().begin() + from, music->Frames().begin() + to,
                       std::back_inserter(sound), [gain](Frame frame) {
                           return Frame{frame.left * gain, frame.right * gain};
                       });
    }

    static std::int64_t NsOf(std::int64_t frame) { return beginNs + frame * 10'000'000 / 441; }

    // Writes @p count of the frames from @p from on as one block.
    void WriteBlock(std::int64_t from, std::int64_t count) {
        std::ofstream log(folder.Path("sink"), std::ios::binary | std::ios::app);
        const std::int64_t size = count * static_cast<std::int64_t>(sizeof(Frame));
        const bench::SinkBlock block = {NsOf(from), bench::rateHz, 0, size};
        log.write(reinterpret_cast<const char*>(&block), sizeof(block));
        log.write(reinterpret_cast<const char*>(sound.data() + from), size);
    }

    // From frame @p from on the sink renders what is not in the log yet, or is to be anew.
    HeardMusic Read(std::int64_t from = 0) {
        for (; from < std::ssize(sound); from += blockFrames) {
            WriteBlock(from, std::min(blockFrames, std::ssize(sound) - from));
        }
        return HeardMusic(folder.Path("sink"), *music);
    }

    // At frame @p sinkFrame of the sink frame @p musicFrame of the music is heard.
    static void ExpectHeard(const HeardMusic& heard, std::int64_t sinkFrame,
                            std::int64_t musicFrame) {
        EXPECT_NEAR(heard.At(NsOf(sinkFrame)).musicMs,
                    static_cast<double>(musicFrame) * 1000.0 / bench::rateHz, 0.02)
            << "at frame " << sinkFrame << " of the sink";
    }

    static Music* music;
    files::Folder folder;
    std::vector<Frame> sound;
};

Music* HeardMusicTest::music = nullptr;

} // namespace

TEST_F(HeardMusicTest, FindsTheMusicFromItsFirstFrameOn) {
    PlayZeros(5000);
    Play(0, 60'000);
    PlayZeros(3000);

    const HeardMusic heard = Read();

    EXPECT_EQ(heard.BeginNs() / 1000, NsOf(5000) / 1000);
    EXPECT_EQ(heard.EndNs() / 1000, NsOf(65'000) / 1000);
    ExpectHeard(heard, 4000, 0);
    ExpectHeard(heard, 5441, 441);
    ExpectHeard(heard, 64'000, 59'000);
    ExpectHeard(heard, 67'000, 60'000);
}

TEST_F(HeardMusicTest, SeesTheMusicStandStillAndGoOn) {
    PlayZeros(2000);
    Play(0, 30'000);
    PlayZeros(700);
    Play(30'000, 60'000);

    const HeardMusic heard = Read();

    EXPECT_EQ(heard.At(NsOf(32'300)).kind, Kind::Silent);
    ExpectHeard(heard, 32'300, 30'000);
    ExpectHeard(heard, 40'000, 37'300);
}

TEST_F(HeardMusicTest, FindsMusicWhoseBeginningWasNotHeard) {
    PlayZeros(40'000);
    Play(30'000, 60'000);

    const HeardMusic heard = Read();

    EXPECT_EQ(heard.BeginNs() / 1000, NsOf(40'000) / 1000);
    ExpectHeard(heard, 39'000, 0);
    ExpectHeard(heard, 45'000, 35'000);
}

TEST_F(HeardMusicTest, SeesTheMusicJump) {
    PlayZeros(2000);
    Play(0, 30'000);
    Play(30'500, 50'000);
    Play(49'000, 80'000);

    const HeardMusic heard = Read();

    ExpectHeard(heard, 31'000, 29'000);
    ExpectHeard(heard, 40'000, 38'500);
    ExpectHeard(heard, 60'000, 57'500);
}

TEST_F(HeardMusicTest, FollowsTheMusicThroughAFade) {
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

    const HeardMusic heard = Read();

    ExpectHeard(heard, 32'400, 30'400);
    ExpectHeard(heard, 35'000, 30'500);
    ExpectHeard(heard, 37'700, 30'700);
    ExpectHeard(heard, 50'000, 43'000);
}

TEST_F(HeardMusicTest, TakesWhatWasRenderedAnewForWhatWasHeard) {
    Play(0, 60'000);
    WriteBlock(0, 30'000);
    WriteBlock(30'000, 2000);

    const HeardMusic heard = Read(20'000);

    ASSERT_EQ(heard.Stretches().size(), 1U);
    EXPECT_EQ(heard.Stretches().front().count, 60'000);
    ExpectHeard(heard, 19'000, 19'000);
    ExpectHeard(heard, 31'000, 31'000);
}

TEST_F(HeardMusicTest, SaysWhereItDoesNotKnow) {
    PlayZeros(2000);
    Play(0, 30'000);
    for (int i = 0; i < 5000; ++i) {
        sound.push_back({0.3F, -0.3F});
    }
    Play(30'000, 60'000);

    const HeardMusic heard = Read();

    EXPECT_EQ(heard.At(NsOf(34'000)).kind, Kind::Unknown);
    ExpectHeard(heard, 50'000, 43'000);
}

TEST_F(HeardMusicTest, SaysWhereTheLogSaysNothing) {
    PlayZeros(2000);
    Play(0, 30'000);
    const std::int64_t gap = std::ssize(sound);
    Play(30'000, 60'000);
    WriteBlock(0, gap);
    WriteBlock(gap + 5000, 25'000);

    const HeardMusic heard(folder.Path("sink"), *music);

    EXPECT_EQ(heard.At(NsOf(gap + 2000)).kind, Kind::Unseen);
    ExpectHeard(heard, gap - 10, 29'990);
    ExpectHeard(heard, gap + 5010, 35'010);
}

TEST_F(HeardMusicTest, KnowsWhetherTheLogShowsTheBeginning) {
    PlayZeros(100);
    Play(20'000, 60'000);

    EXPECT_TRUE(Read().IsBeginningSeen());
}

TEST_F(HeardMusicTest, KnowsWhenTheLogBeganInTheMusic) {
    Play(20'000, 60'000);

    const HeardMusic heard = Read();

    EXPECT_FALSE(heard.IsBeginningSeen());
    EXPECT_EQ(heard.At(NsOf(0) - 1'000'000).kind, Kind::Unseen);
    ExpectHeard(heard, 10'000, 30'000);
}

namespace {

/// A graph of PipeWire's: cycles of a rate of their own, each one following the one before.
class GraphLogTest : public testing::Test {
protected:
    static constexpr std::int64_t cycleFrames = 1024;

    static void SetUpTestSuite() {
        std::mt19937 random(2);
        std::uniform_real_distribution<float> level(-0.9F, 0.9F);
        std::vector<float> noise(std::size_t{2} * 3 * bench::rateHz);
        std::generate(noise.begin(), noise.end(), [&] { return level(random); });
        files::Folder folder;
        files::EncodeMp3(folder.Path("soft.mp3"), noise, bench::rateHz,
                         {"-b", "192", "-t", "--resample", "44.1", "--lowpass", "2"});
        music = new Music(folder.Path("soft.mp3"));
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
        std::ofstream log(folder.Path("sink"), std::ios::binary | std::ios::app);
        std::vector<Frame> cycle(cycleFrames);
        for (std::int64_t done = 0; done < count; done += cycleFrames) {
            for (Frame& frame : cycle) {
                frame = place < 0.0 ? Frame{} : MusicAt(place);
                place += static_cast<double>(bench::rateHz) / static_cast<double>(rate);
            }
            const bench::SinkBlock block = {nowNs, rate, done > 0 || follows ? 1 : 0,
                                            cycleFrames * static_cast<std::int64_t>(sizeof(Frame))};
            log.write(reinterpret_cast<const char*>(&block), sizeof(block));
            log.write(reinterpret_cast<const char*>(cycle.data()), block.size);
            nowNs += cycleFrames * 1'000'000'000 / rate;
        }
    }

    void BeginAnew() {
        std::filesystem::remove(folder.Path("sink"));
        nowNs = beginNs;
    }

    HeardMusic Read() { return HeardMusic(folder.Path("sink"), *music); }

    static double MsOf(double place) { return place * 1000.0 / bench::rateHz; }

    // @p place of the music is heard @p ms after the log's beginning.
    static void ExpectHeard(const HeardMusic& heard, double ms, double place) {
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

        const HeardMusic heard = Read();

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

    const HeardMusic heard = Read();

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

    const HeardMusic heard = Read();

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

    const HeardMusic heard = Read();

    EXPECT_EQ(heard.Stretches().size(), 2U);
    ExpectHeard(heard, lateMs - 1.0, 18.0 * cycleFrames - PlaceAfter(1.0));
    ExpectHeard(heard, lateMs + 2.0, 18.0 * cycleFrames);
    ExpectHeard(heard, lateMs + 4.0, 18.0 * cycleFrames + PlaceAfter(1.0));
}
