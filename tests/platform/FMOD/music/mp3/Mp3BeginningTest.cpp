// What MP3 files begin with, and what is no MP3 file.
#include "Mp3Beginning.h"

#include "Mp3Files.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using files::Bytes;
using files::Joined;
using files::Noise;
using sound::FindFirstMp3Frame;
using sound::TagBytes;

using namespace std::string_view_literals;

// @p count frames of 128 kbit/s, 44.1 kHz.
static Bytes Frames(std::size_t count) {
    Bytes frame = {0xFF, 0xFB, 0x90, 0x00};
    frame.resize(417);
    return Joined(std::vector<Bytes>(count, frame));
}

static Bytes BytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

TEST(Mp3Beginning, TellsTheLengthOfATag) {
    const Bytes id3 = {'I', 'D', '3', 4, 0, 0x00, 0, 0, 2, 1, 0, 0, 0, 0, 0, 0};
    const Bytes withFooter = {'I', 'D', '3', 4, 0, 0x10, 0, 0, 2, 1, 0, 0, 0, 0, 0, 0};
    const Bytes ape = {'A', 'P', 'E', 'T', 'A', 'G', 'E', 'X', 0xD0, 7, 0, 0, 3, 2, 1, 0};
    const Bytes none = {'I', 'D', '4', 4, 0, 0, 0, 0, 2, 1, 0, 0, 0, 0, 0, 0};

    EXPECT_EQ(TagBytes(id3), 10U + 257U);
    EXPECT_EQ(TagBytes(withFooter), 10U + 257U + 10U);
    EXPECT_EQ(TagBytes(ape), 32U + 0x010203U);
    EXPECT_EQ(TagBytes(none), 0U);
}

TEST(Mp3Beginning, IsTwoFrames) {
    EXPECT_EQ(FindFirstMp3Frame(Frames(2)), 0U);
    EXPECT_FALSE(FindFirstMp3Frame(Frames(1)));
    EXPECT_FALSE(FindFirstMp3Frame({}));
}

TEST(Mp3Beginning, MayBePaddedWithZeros) {
    EXPECT_EQ(FindFirstMp3Frame(Joined({Bytes(30'000, 0), Frames(2)})), 30'000U);
    EXPECT_FALSE(FindFirstMp3Frame(Bytes(30'000, 0)));
}

TEST(Mp3Beginning, MayBeTheRestOfAFrame) {
    const Bytes rest = Joined({Noise(8191), {0}});

    EXPECT_EQ(FindFirstMp3Frame(Joined({rest, Frames(4)})), 8192U);
    EXPECT_EQ(FindFirstMp3Frame(Joined({Bytes(100, 0), rest, Frames(4)})), 8292U);
    EXPECT_FALSE(FindFirstMp3Frame(Joined({{1}, rest, Frames(4)})));
    EXPECT_FALSE(FindFirstMp3Frame(Joined({rest, Frames(3)})));
}

TEST(Mp3Beginning, IsThatOfNoOtherFormat) {
    for (const std::string_view mark : {"RIFF....WAVE"sv,
                                        "RIFX"sv,
                                        "RF64"sv,
                                        "riff"sv,
                                        "FORM....AIFC"sv,
                                        "caff"sv,
                                        ".snd"sv,
                                        "fLaC"sv,
                                        "OggS"sv,
                                        "FLV\1\5"sv,
                                        ".RMF"sv,
                                        "\x1A\x45\xDF\xA3"sv,
                                        "\x30\x26\xB2\x75"sv,
                                        "\0\0\1\xBA"sv,
                                        "\0\0\0\x20"
                                        "ftypisom"sv,
                                        "\0\0\0\x08"
                                        "free"sv,
                                        "\0\1\0\0mdat"sv,
                                        "\0\1\0\0moov"sv,
                                        "\0\0\0\x08skip"sv,
                                        "\0\0\0\x08wide"sv}) {
        Bytes file = Joined({BytesOf(mark), Bytes(50, 'x'), Frames(50)});

        EXPECT_FALSE(FindFirstMp3Frame(file)) << mark;

        file[mark.size() - 1] ^= 1; // but the rest of a frame may look like that
        file[4] ^= 1;
        file[0] ^= 1;
        EXPECT_EQ(FindFirstMp3Frame(file), mark.size() + 50) << mark;
    }
}
