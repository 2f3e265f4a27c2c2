// Files of all kinds, good and bad: each gives the right sound or the right result code.
#include "SystemFixture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include <malloc.h>

using files::Bytes;
using files::First;
using files::Folder;
using files::From;
using files::Joined;

using Options = std::vector<std::string>;

class InputsTest : public SystemFixture {
protected:
    InputsTest() { Init(); }

    // All of the sound, until it is over.
    std::vector<float> PlayToTheEnd(const Bytes& bytes) {
        files::WriteAll(folder.Path("input.mp3"), bytes);
        channel = Play(Open(folder.Path("input.mp3")));
        auto mix = script::Pull(10 * 44100);
        script::HearAll();
        EXPECT_FALSE(IsPlaying(channel));
        return mix;
    }

    static void ExpectSine(std::span<const float> samples, double hz, double toleranceDb) {
        const auto measured = tone::Measure(samples, 44100.0, hz);
        EXPECT_NEAR(measured.hz, hz, 0.1);
        EXPECT_NEAR(20.0 * std::log10(measured.amplitude / 0.5), 0.0, toleranceDb);
    }

    // A sine on each side of the second from @p first on.
    static void ExpectTone(const std::vector<float>& mix, std::size_t first, double leftHz,
                           double rightHz, double toleranceDb) {
        const auto second = std::span(mix).subspan(2 * first, 2UL * 44100);
        ExpectSine(tone::Side(second, 0), leftHz, toleranceDb);
        ExpectSine(tone::Side(second, 1), rightHz, toleranceDb);
    }

    FMOD::Channel* channel = nullptr;
};

// @p seconds of @p leftHz and @p rightHz, half scale.
static Bytes Tone(int rateHz, double seconds, const Options& options, double leftHz = 1000.0,
                  double rightHz = 2000.0) {
    const Folder folder;
    const auto frames = static_cast<std::size_t>(seconds * rateHz);
    files::EncodeMp3(folder.Path("tone.mp3"), tone::Sine(rateHz, leftHz, rightHz, 0.5, frames),
                     rateHz, options);
    return files::ReadAll(folder.Path("tone.mp3"));
}

static Bytes Text() {
    const std::string text = "This is no music at all, however long it may go on about it. ";
    return Joined(std::vector<Bytes>(100, Bytes(text.begin(), text.end())));
}

static Bytes Wave() {
    const Bytes head = {'R', 'I', 'F', 'F', 0, 0, 1, 0, 'W', 'A', 'V', 'E'};
    return Joined({head, Tone(44100, 1.0, {"-V", "2"})}); // even with MP3 frames in it
}

// A video whose sound is MP3: its boxes are a few bytes, then come the frames.
static Bytes Mp4() {
    const Bytes head = {0,   0,   0, 24, 'f', 't', 'y', 'p', 'i', 's', 'o',
                        'm', 0,   0, 2,  0,   'i', 's', 'o', 'm', 'm', 'p',
                        '4', '1', 0, 1,  0,   0,   'm', 'd', 'a', 't'};
    return Joined({head, Tone(44100, 1.0, {"-b", "128", "-t"})});
}

struct NoMusic {
    const char* name;
    Bytes (*bytes)();
};

static std::ostream& operator<<(std::ostream& out, const NoMusic& file) {
    return out << file.name;
}

class NoMusicTest : public InputsTest, public testing::WithParamInterface<NoMusic> {};

TEST_P(NoMusicTest, IsRefusedByItsFormat) {
    files::WriteAll(folder.Path("input.mp3"), GetParam().bytes());

    EXPECT_EQ(Create(folder.Path("input.mp3")), FMOD_ERR_FORMAT);
}

static constexpr NoMusic noMusic[] = {
    {"Empty", [] { return Bytes(); }},
    {"SixBytes", [] { return Bytes{'I', 'D', '3', 4, 0, 0}; }},
    {"Text", Text},
    {"Zeros", [] { return Bytes(1'000'000, 0); }},
    {"Ones", [] { return Bytes(1'000'000, 0xFF); }},
    {"Noise", [] { return files::Noise(1'000'000); }},
    {"Wave", Wave},
    {"Mp4", Mp4},
    {"MusicBehind10000Bytes",
     [] { return Joined({files::Noise(10'000), Tone(44100, 1.0, {"-V", "2"})}); }},
    {"LayerTwo", files::LayerTwo},
    {"TagAlone", [] { return files::Tag(10'000'000, 10'000'000); }},
};

INSTANTIATE_TEST_SUITE_P(File, NoMusicTest, testing::ValuesIn(noMusic),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(InputsTest, AFileThatCannotBeReadFromTheStartIsABadFile) {
    files::WriteAll(folder.Path("input.mp3"), Tone(44100, 1.0, {"-V", "2"}));
    reads::FailAfter(0);

    EXPECT_EQ(Create(folder.Path("input.mp3")), FMOD_ERR_FILE_BAD);
}

// A file of three seconds: 1 kHz on the left, 2 kHz on the right.
struct Music {
    const char* name;
    Bytes (*bytes)();
    int longerBy = 0; ///< at most, in frames of the output
};

static std::ostream& operator<<(std::ostream& out, const Music& file) {
    return out << file.name;
}

static Bytes WithDamage(const Bytes& damage) {
    const Bytes music = Tone(44100, 3.0, {"-V", "2"});
    return Joined({First(music, music.size() / 2), damage, From(music, music.size() / 2)});
}

static constexpr int untrimmed = 3 * 1152; // what the encoder adds, and nobody notes

static constexpr Music music[] = {
    {"WithALengthNoted", [] { return Tone(44100, 3.0, {"-V", "2"}); }},
    {"WithoutTags", [] { return Tone(44100, 3.0, {"-V", "2", "-t"}); }, untrimmed},
    {"OfConstantBitRate", [] { return Tone(44100, 3.0, {"-b", "320", "--scale", "1"}); }},
    {"InFreeFormat",
     [] { return Tone(44100, 3.0, {"--freeformat", "-b", "300", "--scale", "1", "-t"}); },
     untrimmed},
    {"At48kHz", [] { return Tone(48000, 3.0, {"-V", "2"}); }},
    {"At32kHz", [] { return Tone(32000, 3.0, {"-V", "0"}); }},
    {"At24kHz", [] { return Tone(24000, 3.0, {"-V", "0", "--resample", "24"}); }},
    {"At22kHz", [] { return Tone(22050, 3.0, {"-V", "0", "--resample", "22.05"}); }},
    {"At16kHz", [] { return Tone(16000, 3.0, {"-V", "0", "--resample", "16"}); }},
    {"At12kHz", [] { return Tone(12000, 3.0, {"-V", "0", "--resample", "12"}); }},
    {"At11kHz", [] { return Tone(11025, 3.0, {"-V", "0", "--resample", "11.025"}); }},
    {"At8kHz", [] { return Tone(8000, 3.0, {"-V", "0", "--resample", "8"}); }},
    {"BehindALongTag",
     [] { return Joined({files::Tag(10'000'000, 10'000'000), Tone(44100, 3.0, {"-V", "2"})}); }},
    {"BehindATagThatLies",
     [] { return Joined({files::Tag(200'000'000, 300), Tone(44100, 3.0, {"-V", "2"})}); }},
    {"BehindAnApeTag",
     [] {
         Bytes tag = {'A', 'P', 'E', 'T', 'A', 'G', 'E', 'X', 0xD0, 7, 0, 0, 0, 0x80};
         tag.resize(32 + 0x8000);
         return Joined({tag, Tone(44100, 3.0, {"-V", "2"})});
     }},
    {"BehindPadding", [] { return Joined({Bytes(30'000, 0), Tone(44100, 3.0, {"-V", "2"})}); }},
    {"BehindTheRestOfAFrame",
     [] { return Joined({files::Noise(1400), Tone(44100, 3.0, {"-V", "2"})}); }},
    {"BeforeATag",
     [] { return Joined({Tone(44100, 3.0, {"-V", "2"}), {'T', 'A', 'G'}, Bytes(125, ' ')}); }},
    {"WithZerosInTheMiddle", [] { return WithDamage(Bytes(100'000, 0)); }, untrimmed},
    {"WithNoiseInTheMiddle", [] { return WithDamage(files::Noise(100'000)); }, untrimmed},
};

class MusicTest : public InputsTest, public testing::WithParamInterface<Music> {};

TEST_P(MusicTest, IsHeardAtItsPitchAndLevelForItsLength) {
    const auto mix = PlayToTheEnd(GetParam().bytes());

    const unsigned int positionMs = Position(channel);
    EXPECT_GE(positionMs, 2999U);
    EXPECT_LE(positionMs, 3000U + static_cast<unsigned int>(GetParam().longerBy * 10 / 441));
    ExpectTone(mix, 4'000, 1000.0, 2000.0, 0.1);
    ExpectTone(mix, 84'000, 1000.0, 2000.0, 0.1);
}

INSTANTIATE_TEST_SUITE_P(File, MusicTest, testing::ValuesIn(music),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(InputsTest, MonoIsHeardOnBothSides) {
    const auto mix = PlayToTheEnd(Tone(22050, 2.0, {"-V", "2", "-m", "m"}, 1000.0, 1000.0));

    EXPECT_EQ(tone::Side(mix, 0), tone::Side(mix, 1));
    EXPECT_EQ(Position(channel), 2000U);
    ExpectTone(mix, 22'050, 1000.0, 1000.0, 0.1);
}

TEST_F(InputsTest, AFileCutShortIsHeardAsFarAsItGoes) {
    const Bytes whole = Tone(44100, 4.0, {"-b", "320", "--scale", "1"});

    const auto mix = PlayToTheEnd(First(whole, whole.size() / 2 + 100));

    EXPECT_NEAR(Position(channel), 2000.0, 3.0 * 26.0);
    ExpectTone(mix, 30'000, 1000.0, 2000.0, 0.1);
}

TEST_F(InputsTest, AFileThatBreaksOffIsHeardAsFarAsItCanBeRead) {
    const Bytes whole = Tone(44100, 4.0, {"-b", "320", "--scale", "1"});
    files::WriteAll(folder.Path("input.mp3"), whole);
    reads::FailAfter(65'536 + whole.size() / 2); // its beginning is looked at to open it

    channel = Play(Open(folder.Path("input.mp3")));
    const auto mix = script::Pull(5 * 44100);
    script::SetHeard(4410);
    EXPECT_EQ(Position(channel), 100U);
    EXPECT_TRUE(IsPlaying(channel));
    script::HearAll();

    unsigned int position = 0;
    bool playing = true;
    EXPECT_EQ(channel->getPosition(&position, FMOD_TIMEUNIT_MS), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(channel->isPlaying(&playing), FMOD_ERR_FILE_BAD);
    EXPECT_FALSE(playing);
    EXPECT_NEAR(position, 2000.0, 3.0 * 26.0);
    ExpectTone(mix, 30'000, 1000.0, 2000.0, 0.1);
}

struct Rates {
    int firstHz;
    int secondHz;
};

TEST_F(InputsTest, AFileThatChangesItsRateIsHeardAtItsPitchThroughout) {
    for (const Rates& rates : {Rates{44100, 48000}, Rates{48000, 44100}, Rates{22050, 32000}}) {
        SCOPED_TRACE(rates.firstHz);
        const std::string firstRate = std::to_string(rates.firstHz / 1000.0);
        const auto mix =
            PlayToTheEnd(Joined({Tone(rates.firstHz, 2.0, {"-V", "0", "--resample", firstRate}),
                                 Tone(rates.secondHz, 2.0, {"-V", "0"}, 3000.0, 1000.0)}));

        EXPECT_NEAR(Position(channel), 4000.0, 1.0);
        ExpectTone(mix, 40'000, 1000.0, 2000.0, 0.1);
        ExpectTone(mix, 90'000, 3000.0, 1000.0, 0.1);
    }
}

TEST_F(InputsTest, WhatOnceWentWrongIsPlayedWithinFullScale) {
    // New memory holds numbers near the largest that there are, or what a sanitizer puts there.
    mallopt(M_PERTURB, 0x80);
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(FIXTURES)) {
        SCOPED_TRACE(file.path());
        const auto mix = PlayToTheEnd(files::ReadAll(file.path()));

        EXPECT_TRUE(std::all_of(mix.begin(), mix.end(),
                                [](float sample) { return sample >= -1.0F && sample <= 1.0F; }));
        ++count;
    }
    mallopt(M_PERTURB, 0);
    EXPECT_GT(count, 0);
}
