// What the benchmarks take for the truth: sink logs whose sound is known are read as such.
#include "HeardMusic.h"
#include "Mp3Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
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
        const std::int64_t heardNs = NsOf(from);
        const std::int64_t size = count * static_cast<std::int64_t>(sizeof(Frame));
        log.write(reinterpret_cast<const char*>(&heardNs), sizeof(heardNs));
        log.write(reinterpret_cast<const char*>(&size), sizeof(size));
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
