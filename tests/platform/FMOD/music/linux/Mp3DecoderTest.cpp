// MP3 files of all kinds, whole and damaged -> stereo frames.
#include "Mp3Decoder.h"

#include "Mp3Files.h"
#include "Mp3Header.h"
#include "ReadScript.h"
#include "Tone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using files::Bytes;
using files::First;
using files::From;
using files::Joined;
using files::Tag;
using sound::File;
using sound::Mp3Decoder;

// How far a level may be off, as factors: 0.1 dB, and 1 dB where the encoder changes it.
static constexpr double exactly = 1.0116;
static constexpr double roughly = 1.122;

class Mp3DecoderTest : public testing::Test {
protected:
    ~Mp3DecoderTest() override { reads::Reset(); }

    FMOD_RESULT Open(const std::string& path) {
        std::unique_ptr<File> file;
        const FMOD_RESULT result = File::Open(path.c_str(), file);
        return result == FMOD_OK ? Mp3Decoder::Open(std::move(file), decoder) : result;
    }

    FMOD_RESULT OpenBytes(const Bytes& bytes) {
        files::WriteAll(folder.Path("bytes.mp3"), bytes);
        return Open(folder.Path("bytes.mp3"));
    }

    // A 1 kHz sine on the left, 2 kHz on the right, half scale.
    std::string Encoded(int rateHz, std::size_t frames,
                        const std::vector<std::string>& options = {"-V", "2"}) {
        std::string path = folder.Path("tone.mp3");
        files::EncodeMp3(path, tone::Sine(rateHz, 1000.0, 2000.0, 0.5, frames), rateHz, options);
        return path;
    }

    // All that is left to decode.
    std::vector<float> DecodeAll() {
        std::vector<float> all;
        std::span<const float> frames;
        Mp3Decoder::Progress progress = decoder->Decode(frames);
        for (; progress == Mp3Decoder::Progress::Frames; progress = decoder->Decode(frames)) {
            all.insert(all.end(), frames.begin(), frames.end());
        }
        EXPECT_EQ(progress, Mp3Decoder::Progress::End);
        return all;
    }

    // The sines, in the second before the last quarter of a second.
    static void ExpectTone(const std::vector<float>& frames, int rateHz, double tolerance) {
        const auto second = static_cast<std::size_t>(rateHz);
        ASSERT_GE(frames.size() / 2, 5 * second / 4);
        const auto late = std::span(frames).subspan(frames.size() - 5 * second / 4 * 2, 2 * second);
        const auto left = tone::Measure(tone::Side(late, 0), rateHz, 1000.0);
        const auto right = tone::Measure(tone::Side(late, 1), rateHz, 2000.0);
        EXPECT_NEAR(left.hz, 1000.0, 0.1);
        EXPECT_NEAR(right.hz, 2000.0, 0.1);
        EXPECT_GT(left.amplitude, 0.5 / tolerance);
        EXPECT_LT(left.amplitude, 0.5 * tolerance);
        EXPECT_GT(right.amplitude, 0.5 / tolerance);
        EXPECT_LT(right.amplitude, 0.5 * tolerance);
    }

    files::Folder folder;
    std::unique_ptr<Mp3Decoder> decoder;
};

// Where the @p number-th frame ends.
static std::size_t EndOfFrame(const Bytes& bytes, int number) {
    std::size_t end = 0;
    for (int i = 0; i < number; ++i) {
        const auto header = sound::ParseMp3Header(std::span(bytes).subspan(end, 4));
        EXPECT_TRUE(header);
        end += header ? static_cast<std::size_t>(header->frameBytes) : 0;
    }
    return end;
}

TEST_F(Mp3DecoderTest, KeepsFrequencyLevelAndSides) {
    ASSERT_EQ(Open(Encoded(44100, 88200)), FMOD_OK);

    EXPECT_EQ(decoder->RateHz(), 44100);
    ExpectTone(DecodeAll(), 44100, exactly);
}

TEST_F(Mp3DecoderTest, GivesTheExactLengthThatAnEncoderNoted) {
    for (const std::size_t frames : {100003U, 88200U, 51200U, 4321U}) {
        ASSERT_EQ(Open(Encoded(44100, frames)), FMOD_OK);

        EXPECT_EQ(DecodeAll().size(), 2 * frames);
    }
}

TEST_F(Mp3DecoderTest, BeginsWithTheFirstFrameThatWasEncoded) {
    std::vector<float> frames(88'200, 0.0F);
    for (std::size_t i = 20000; i < frames.size(); ++i) {
        const std::size_t frame = i / 2;
        frames[i] = 0.5F * static_cast<float>(std::sin(0.05 * static_cast<double>(frame)));
    }
    files::EncodeMp3(folder.Path("late.mp3"), frames, 44100, {"-b", "320"});
    ASSERT_EQ(Open(folder.Path("late.mp3")), FMOD_OK);

    const auto decoded = DecodeAll();

    ASSERT_EQ(decoded.size(), frames.size());
    double error = 0.0;
    for (std::size_t i = 30000; i < 80000; ++i) {
        error = std::max(error, static_cast<double>(std::fabs(decoded[i] - frames[i])));
    }
    EXPECT_LT(error, 0.02); // one frame earlier or later would be 0.025
}

TEST_F(Mp3DecoderTest, SkipsTags) {
    const Bytes music = files::ReadAll(Encoded(44100, 88200));
    for (const std::size_t length : {0U, 300U, 10'000'000U}) {
        ASSERT_EQ(OpenBytes(Joined({Tag(length, length), music})), FMOD_OK) << length;
        EXPECT_EQ(DecodeAll().size(), 2U * 88200U) << length;
    }
    ASSERT_EQ(OpenBytes(Joined({Tag(20, 20), Tag(500, 500), music})), FMOD_OK);
    EXPECT_EQ(DecodeAll().size(), 2U * 88200U);
}

TEST_F(Mp3DecoderTest, RefusesAFrameThatStandsAlone) {
    const Bytes music = files::ReadAll(Encoded(44100, 44100, {"-t", "-b", "128"}));

    EXPECT_EQ(OpenBytes(First(music, 417)), FMOD_ERR_FORMAT);
}

TEST_F(Mp3DecoderTest, GoesOnWithADifferentRateAndLosesNoFrame) {
    const std::vector<std::vector<std::string>> encodings = {{"-b", "128"}, {"-b", "128", "-t"}};
    for (const auto& options : encodings) {
        const Bytes second = files::ReadAll(Encoded(48000, 96'000, options));
        ASSERT_EQ(OpenBytes(second), FMOD_OK);
        const auto expectedSecond = DecodeAll();
        const Bytes first = files::ReadAll(Encoded(44100, 88'200, options));
        ASSERT_EQ(OpenBytes(first), FMOD_OK);
        const auto expectedFirst = DecodeAll();
        ASSERT_EQ(OpenBytes(Joined({first, second})), FMOD_OK);
        EXPECT_EQ(decoder->RateHz(), 44100);

        const auto decoded = DecodeAll();

        EXPECT_EQ(decoder->RateHz(), 48000);
        ASSERT_EQ(decoded.size(), expectedFirst.size() + expectedSecond.size());
        EXPECT_TRUE(std::equal(expectedFirst.begin(), expectedFirst.end(), decoded.begin()));
        EXPECT_TRUE(std::equal(expectedSecond.rbegin(), expectedSecond.rend(), decoded.rbegin()));
    }
}

TEST_F(Mp3DecoderTest, BeginsAgainWithTheSameFrames) {
    ASSERT_EQ(Open(Encoded(44100, 88200)), FMOD_OK);
    const auto first = DecodeAll();

    ASSERT_EQ(decoder->Rewind(), FMOD_OK);

    EXPECT_EQ(DecodeAll(), first);
}

TEST_F(Mp3DecoderTest, LooksAtABoundedPartOfTheFileToOpenIt) {
    const Bytes music = files::ReadAll(Encoded(44100, 441'000, {"-b", "128", "-t"}));
    const Bytes longMusic = Joined(std::vector<Bytes>(20, music));
    for (const Bytes& bytes :
         {music, longMusic, Joined({Tag(10'000'000, 10'000'000), music}),
          Joined({files::Noise(8000), music}), Joined({Tag(200'000'000, 300), music})}) {
        reads::Reset();
        ASSERT_EQ(OpenBytes(bytes), FMOD_OK);
        EXPECT_LT(reads::BytesRead(), 75'000U);
        reads::Reset();
        ASSERT_EQ(decoder->Rewind(), FMOD_OK);
        EXPECT_LT(reads::BytesRead(), 75'000U);
    }
    for (const Bytes& bytes : {files::Noise(2'000'000), Bytes(2'000'000, 0)}) {
        reads::Reset();
        ASSERT_EQ(OpenBytes(bytes), FMOD_ERR_FORMAT);
        EXPECT_LT(reads::BytesRead(), 75'000U);
    }
}

// Four seconds of music, whole and with something in it that is none.
class DamagedMp3Test : public Mp3DecoderTest {
protected:
    DamagedMp3Test() {
        EXPECT_EQ(OpenBytes(music), FMOD_OK);
        length = DecodeAll().size();
    }

    void OpenWith(const Bytes& damage, std::size_t at) {
        ASSERT_EQ(OpenBytes(Joined({First(music, at), damage, From(music, at)})), FMOD_OK);
    }

    const std::vector<std::string> untagged = {"-b", "128", "-t"};
    const Bytes music = files::ReadAll(Encoded(44100, 176'400, untagged));
    const std::size_t middle = EndOfFrame(music, 60);
    std::size_t length = 0; // in samples, when whole
};

TEST_F(DamagedMp3Test, SkipsDamageOfAnyLengthAndNothingElse) {
    for (const Bytes& damage : {Bytes(100'000, 0), files::Noise(100'000), Bytes(100'000, 0xFF)}) {
        for (const std::size_t at : {middle, middle + 200}) {
            OpenWith(damage, at);

            const auto frames = DecodeAll();

            EXPECT_EQ(frames.size(), length); // the frame cut in two is as long as before
            ExpectTone(frames, 44100, roughly);
            EXPECT_TRUE(std::all_of(frames.begin(), frames.end(),
                                    [](float sample) { return std::fabs(sample) <= 0.6F; }));
        }
    }
}

TEST_F(DamagedMp3Test, FindsTheMusicBehindDamageWhereverItBegins) {
    // The search goes through the file in pieces: no frame is missed where two of them meet.
    for (std::size_t count = 62'000; count < 67'000; count += 250) {
        OpenWith(Bytes(count, 0), middle);

        EXPECT_EQ(DecodeAll().size(), length) << count;
    }
}

TEST_F(DamagedMp3Test, DoesNotBelieveAFalseHeaderInsideDamage) {
    // It says that its frame is longer than a kilobyte, but the music goes on after 60 bytes.
    for (const unsigned char rate : Bytes{0xE0, 0xE4, 0xE8, 0x00}) {
        Bytes damage = {0x55, 0x55, 0x55, 0xFF, 0xFB, rate, 0x00};
        damage.resize(63, 0x55);

        OpenWith(damage, middle);

        EXPECT_EQ(DecodeAll().size(), length) << int{rate};
        EXPECT_EQ(decoder->RateHz(), 44100);
    }
}

TEST_F(DamagedMp3Test, LosesNoFrameBehindAFalseOneWhereAFrameIsDue) {
    Bytes damage = {0xFF, 0xFB, 0xE0, 0x00};
    damage.resize(60, 0x55);

    OpenWith(damage, middle);

    EXPECT_EQ(DecodeAll().size(), length + 2UL * 1152); // the false frame as well
}

TEST_F(DamagedMp3Test, GoesOnBehindFramesThatCannotBeDecoded) {
    // In free format, but longer than any that libmpg123 reads.
    Bytes frame = {0x55, 0xFF, 0xFB, 0x00, 0x00};
    frame.resize(5000, 0x55);

    OpenWith(Joined({frame, frame, frame, frame}), middle);

    EXPECT_EQ(DecodeAll().size(), length);
}

TEST_F(DamagedMp3Test, PlaysFourFramesBetweenDamages) {
    const Bytes zeros(1000, 0);
    const std::size_t later = EndOfFrame(music, 64);
    const Bytes between(music.begin() + static_cast<std::ptrdiff_t>(middle),
                        music.begin() + static_cast<std::ptrdiff_t>(later));

    ASSERT_EQ(OpenBytes(Joined({First(music, middle), zeros, between, zeros, From(music, later)})),
              FMOD_OK);

    EXPECT_EQ(DecodeAll().size(), length);
}

TEST_F(DamagedMp3Test, SkipsATagByItsLength) {
    OpenWith(Tag(50'000'000, 50'000'000), middle);
    reads::Reset();

    EXPECT_EQ(DecodeAll().size(), length);

    EXPECT_LT(reads::BytesRead(), 1'000'000U);
}

TEST_F(DamagedMp3Test, EndsAtDamageLongerThan16MiB) {
    for (const std::size_t mib : {15U, 17U, 1000U}) {
        // Zeros that take no room on the disk.
        files::WriteAll(folder.Path("bytes.mp3"), First(music, middle));
        std::filesystem::resize_file(folder.Path("bytes.mp3"), middle + (mib << 20));
        std::ofstream(folder.Path("bytes.mp3"), std::ios::binary | std::ios::app)
            .write(reinterpret_cast<const char*>(&music[middle]),
                   static_cast<std::streamsize>(music.size() - middle));
        ASSERT_EQ(Open(folder.Path("bytes.mp3")), FMOD_OK);
        reads::Reset();

        const std::size_t heard = DecodeAll().size();

        if (mib < 16) {
            EXPECT_EQ(heard, length);
        } else {
            EXPECT_NEAR(static_cast<double>(heard), 60.0 * 2.0 * 1152.0, 2.0 * 1152.0) << mib;
        }
        EXPECT_LT(reads::BytesRead(), 40'000'000U);
    }
}

TEST_F(DamagedMp3Test, EndsAtThousandsOfFramesThatCannotBeDecoded) {
    const Bytes frame = {0xFF, 0xFB, 0x00, 0x00}; // in free format, shorter than any
    OpenWith(Joined(std::vector<Bytes>(500'000, frame)), middle);
    reads::Reset();

    DecodeAll();

    EXPECT_LT(reads::BytesRead(), 40'000'000U);
}

TEST_F(DamagedMp3Test, EndsSoonWhenInterrupted) {
    OpenWith(Bytes(15'000'000, 0), middle);
    for (int frame = 0; frame < 30; ++frame) {
        std::span<const float> frames;
        ASSERT_EQ(decoder->Decode(frames), Mp3Decoder::Progress::Frames);
    }
    decoder->Interrupt();
    reads::Reset();

    DecodeAll();

    EXPECT_EQ(reads::BytesRead(), 0U);
    ASSERT_EQ(decoder->Rewind(), FMOD_OK);
    EXPECT_EQ(DecodeAll().size(), length);
}

TEST_F(DamagedMp3Test, DropsAFewFramesOfAnotherRate) {
    const Bytes other = files::ReadAll(Encoded(48000, 48000, untagged));

    OpenWith(First(other, EndOfFrame(other, 3)), middle);
    const auto decoded = DecodeAll();

    EXPECT_EQ(decoder->RateHz(), 44100);
    EXPECT_EQ(decoded.size(), length);
    ExpectTone(decoded, 44100, roughly);
}
