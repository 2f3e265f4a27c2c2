// The headers of MP3 frames.
#include "Mp3Header.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <vector>

using sound::FindMp3Stream;
using sound::ParseMp3Header;

using Bytes = std::vector<unsigned char>;

static void Append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// 128 kbit/s, 44.1 kHz: 417 bytes.
static Bytes Frame() {
    Bytes frame = {0xFF, 0xFB, 0x90, 0x00};
    frame.resize(417);
    return frame;
}

TEST(Mp3Header, TellsRateAndLengthOfEachMpegVersion) {
    struct Case {
        std::array<unsigned char, 4> bytes;
        int rateHz;
        int frameBytes;
    };
    const std::vector<Case> cases = {
        {{0xFF, 0xFB, 0x90, 0x00}, 44100, 417}, // MPEG-1, 128 kbit/s
        {{0xFF, 0xFB, 0x92, 0x00}, 44100, 418}, // the same, padded
        {{0xFF, 0xFA, 0xE4, 0x00}, 48000, 960}, // MPEG-1, 320 kbit/s, with a checksum
        {{0xFF, 0xFB, 0x18, 0x00}, 32000, 144}, // MPEG-1, 32 kbit/s
        {{0xFF, 0xF3, 0x80, 0x00}, 22050, 208}, // MPEG-2, 64 kbit/s
        {{0xFF, 0xE3, 0x18, 0x00}, 8000, 72},   // MPEG-2.5, 8 kbit/s
        {{0xFF, 0xFB, 0x00, 0x00}, 44100, 0},   // free format
    };
    for (const Case& expected : cases) {
        const auto header = ParseMp3Header(expected.bytes);

        ASSERT_TRUE(header);
        EXPECT_EQ(header->rateHz, expected.rateHz);
        EXPECT_EQ(header->frameBytes, expected.frameBytes);
    }
}

TEST(Mp3Header, RefusesWhatIsNoLayerThreeHeader) {
    const std::vector<std::array<unsigned char, 4>> cases = {
        {0x00, 0x00, 0x00, 0x00}, {0xFF, 0xDB, 0x90, 0x00}, // sync broken
        {0xFF, 0xEB, 0x90, 0x00},                           // reserved version
        {0xFF, 0xFD, 0x90, 0x00},                           // layer II
        {0xFF, 0xFF, 0x90, 0x00},                           // layer I
        {0xFF, 0xF9, 0x90, 0x00},                           // reserved layer
        {0xFF, 0xFB, 0xF0, 0x00},                           // no such bit rate
        {0xFF, 0xFB, 0x9C, 0x00},                           // no such sample rate
    };
    for (const auto& bytes : cases) {
        EXPECT_FALSE(ParseMp3Header(bytes)) << std::hex << int{bytes[1]} << " " << int{bytes[2]};
    }
}

TEST(Mp3Header, FindsAStreamAfterOtherBytes) {
    Bytes bytes(100, 0x55);
    Append(bytes, Frame());
    Append(bytes, Frame());

    EXPECT_EQ(FindMp3Stream(bytes, 2), 100U);
}

TEST(Mp3Header, FindsNoStreamInOneFrameAlone) {
    EXPECT_FALSE(FindMp3Stream(Frame(), 2));
}

TEST(Mp3Header, PassesOverAHeaderThatNoFrameFollows) {
    Bytes bytes = {0xFF, 0xFB, 0x90, 0x00, 0x55, 0x55};
    Append(bytes, Frame());
    Append(bytes, Frame());

    EXPECT_EQ(FindMp3Stream(bytes, 2), 6U);
}

TEST(Mp3Header, DoesNotTakeAFrameOfAnotherRateForTheNext) {
    Bytes bytes = Frame();
    Bytes other = Frame();
    other[2] = 0x94; // 48 kHz
    Append(bytes, other);

    EXPECT_FALSE(FindMp3Stream(bytes, 2));
}

TEST(Mp3Header, FindsAFreeFormatStreamByThreeHeaders) {
    Bytes frame = {0xFF, 0xFB, 0x00, 0x00};
    frame.resize(700);
    Bytes bytes = frame;
    Append(bytes, frame);
    EXPECT_FALSE(FindMp3Stream(bytes, 2));

    Append(bytes, frame);
    EXPECT_EQ(FindMp3Stream(bytes, 2), 0U);
}

TEST(Mp3Header, FindsOnlyAsManyFramesInARowAsAskedFor) {
    Bytes padded = Frame();
    padded[2] = 0x92;
    padded.resize(418);
    Bytes bytes = Frame();
    Append(bytes, padded);
    Append(bytes, Frame());
    EXPECT_EQ(FindMp3Stream(bytes, 3), 0U);
    EXPECT_FALSE(FindMp3Stream(bytes, 4));

    bytes.resize(bytes.size() + 1);
    Append(bytes, Frame());
    EXPECT_EQ(FindMp3Stream(bytes, 3), 0U);
    EXPECT_FALSE(FindMp3Stream(bytes, 4)); // the fourth does not begin where the third ends
}

TEST(Mp3Header, CountsThePaddingOfFreeFormatFrames) {
    Bytes plain = {0xFF, 0xFB, 0x00, 0x00};
    plain.resize(700);
    Bytes padded = {0xFF, 0xFB, 0x02, 0x00};
    padded.resize(701);
    Bytes bytes(10, 0x55);
    for (const Bytes& frame : {padded, plain, padded, plain}) {
        Append(bytes, frame);
    }

    EXPECT_EQ(FindMp3Stream(bytes, 4), 10U);
    EXPECT_FALSE(FindMp3Stream(bytes, 5));
}

TEST(Mp3Header, FindsNothingInFewerThanFourBytes) {
    EXPECT_FALSE(FindMp3Stream({}, 2));
    EXPECT_FALSE(FindMp3Stream(Bytes{0xFF, 0xFB, 0x90}, 2));
}

TEST(Mp3Header, TakesTheLengthOfFreeFormatFramesFromTheNextHeader) {
    Bytes frame = {0xFF, 0xFB, 0x00, 0x00};
    frame.resize(8192);
    Bytes bytes = frame;
    Append(bytes, frame);
    Append(bytes, frame);
    EXPECT_EQ(FindMp3Stream(bytes, 3), 0U);

    frame.push_back(0); // longer than any
    bytes = frame;
    Append(bytes, frame);
    Append(bytes, frame);
    EXPECT_FALSE(FindMp3Stream(bytes, 3));
}

// Headers, none of which four follow each other at one distance: numbers with only 0, 1 and 2 in
// their last five digits to the base of five, times four bytes.
static Bytes HeadersWithoutAStream(unsigned char bitRate) {
    Bytes bytes(std::size_t{1} << 20);
    for (std::size_t number = 0; 4 * number < bytes.size(); ++number) {
        bool isMarked = true;
        for (std::size_t digits = number % 3125; digits != 0; digits /= 5) {
            isMarked = isMarked && digits % 5 < 3;
        }
        if (isMarked) {
            bytes[4 * number] = 0xFF;
            bytes[4 * number + 1] = 0xFB;
            bytes[4 * number + 2] = bitRate;
        }
    }
    return bytes;
}

static double SecondsToSearch(const Bytes& bytes) {
    const std::clock_t before = std::clock();
    EXPECT_FALSE(FindMp3Stream(bytes, 4));
    return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

TEST(Mp3Header, SearchesFreeFormatAboutAsFastAsOthers) {
    const double others = SecondsToSearch(HeadersWithoutAStream(0x90));

    EXPECT_LT(SecondsToSearch(HeadersWithoutAStream(0x00)), 20.0 * others + 0.01);
}
