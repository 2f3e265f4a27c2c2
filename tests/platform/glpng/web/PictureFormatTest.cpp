// What is accepted of a file before the browser's picture of it is taken: what the native decoder
// accepts, except that the pixels are not decompressed.
#include "PictureFormat.h"

#include "PngImage.h"

#include "PngChunks.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using gltest::Bytes;
using gltest::ChunksOf;
using gltest::Encode;
using gltest::FileOf;
using gltest::PngChunk;

using Chunks = std::vector<PngChunk>;

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File OpenMemory(Bytes& bytes) {
    return {fmemopen(bytes.data(), bytes.size(), "rb"), std::fclose};
}

constexpr unsigned int maxSide = 64;

std::optional<glpng::PictureFormat> Accepted(Bytes bytes) {
    glpng::PictureFormat format;
    if (!glpng::ReadPictureFormat(OpenMemory(bytes).get(), maxSide, format)) {
        return std::nullopt;
    }
    return format;
}

/// Whether both say the same of the file; of its format, too.
void Compare(Bytes bytes, const std::string& what) {
    const auto format = Accepted(bytes);
    glpng::PngImage image;
    const bool isDecoded = glpng::DecodePng(OpenMemory(bytes).get(), maxSide, image);
    ASSERT_EQ(format.has_value(), isDecoded) << what;
    if (isDecoded) {
        EXPECT_EQ(format->width, image.width) << what;
        EXPECT_EQ(format->height, image.height) << what;
        EXPECT_EQ(format->depth, image.depth) << what;
        EXPECT_EQ(format->hasAlpha, image.hasAlpha) << what;
    }
}

/// One of each colour type.
std::vector<Chunks> Samples() {
    return {
        ChunksOf(Encode({.width = 2, .rows = {10, 20, 30, 40, 50, 60}})),
        ChunksOf(Encode({.colourType = PNG_COLOR_TYPE_GRAY, .depth = 2, .rows = {0x80}})),
        ChunksOf(Encode({.colourType = PNG_COLOR_TYPE_GRAY_ALPHA, .rows = {1, 2}})),
        ChunksOf(Encode({.colourType = PNG_COLOR_TYPE_RGB_ALPHA, .rows = {1, 2, 3, 4}})),
        ChunksOf(Encode({.width = 2,
                         .colourType = PNG_COLOR_TYPE_PALETTE,
                         .rows = {1, 0},
                         .palette = {{1, 2, 3}, {40, 50, 60}},
                         .paletteAlpha = {99, 77}})),
    };
}

/// That pictures depend on, and one that they do not; of right and wrong lengths.
Chunks Strangers() {
    Chunks strangers;
    for (const auto length : {0U, 1U, 2U, 3U, 6U, 9U, 12U, 768U, 771U}) {
        for (const char* name : {"PLTE", "tRNS", "gAMA", "IEND", "ABCD"}) {
            strangers.push_back({.name = name, .data = Bytes(length)});
        }
    }
    return strangers;
}

} // namespace

TEST(PictureFormat, HasTheFormatOfTheFile) {
    for (const Chunks& picture : Samples()) {
        Compare(FileOf(picture), picture.front().name);
        EXPECT_TRUE(Accepted(FileOf(picture)).has_value());
    }
}

TEST(PictureFormat, IsRefusedWithEveryChunkWhereTheDecoderRefusesIt) {
    for (const Chunks& picture : Samples()) {
        for (std::size_t at = 0; at <= picture.size(); ++at) {
            for (const PngChunk& stranger : Strangers()) {
                Chunks chunks = picture;
                chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(at), stranger);
                Compare(FileOf(chunks), stranger.name + " of " +
                                            std::to_string(stranger.data.size()) + " bytes as " +
                                            std::to_string(at) + " of type " +
                                            std::to_string(picture.front().data[9]));
            }
        }
    }
}

TEST(PictureFormat, IsRefusedWithoutAChunkOrWithTwo) {
    for (const Chunks& picture : Samples()) {
        for (std::size_t at = 0; at < picture.size(); ++at) {
            const auto offset = static_cast<std::ptrdiff_t>(at);
            Chunks without = picture;
            without.erase(without.begin() + offset);
            Compare(FileOf(without), "without " + picture[at].name);
            Chunks twice = picture;
            twice.insert(twice.begin() + offset, picture[at]);
            if (picture[at].name != "IDAT") { // only decompression tells
                Compare(FileOf(twice), "twice " + picture[at].name);
            }
            Chunks wrong = picture;
            wrong[at].checksumIsWrong = true;
            Compare(FileOf(wrong), "wrong checksum of " + picture[at].name);
        }
    }
}

TEST(PictureFormat, IsRefusedWithADepthThatItsColoursCannotHave) {
    constexpr std::pair<int, int> wrong[] = {{0, 3}, {2, 4}, {3, 16}, {4, 2},
                                             {6, 1}, {1, 8}, {5, 8},  {7, 8}};
    for (const auto& [colourType, depth] : wrong) {
        for (Chunks chunks : Samples()) {
            chunks[0].data[8] = static_cast<unsigned char>(depth);
            chunks[0].data[9] = static_cast<unsigned char>(colourType);
            EXPECT_FALSE(Accepted(FileOf(chunks))) << colourType << " with " << depth;
        }
    }
}

// Lengths that come to nothing where a size has 32 bits.
TEST(PictureFormat, IsRefusedWithAChunkOfAllTheMemoryThereIs) {
    for (Chunks chunks : Samples()) {
        chunks.insert(chunks.begin() + 1,
                      {.name = "gAMA", .data = Bytes(4), .claimedLength = 0xFFFFFFF4});
        EXPECT_FALSE(Accepted(FileOf(chunks)));
        chunks[1] = {.name = "IDAT", .data = Bytes(4), .claimedLength = 0xFFFFFFFC};
        EXPECT_FALSE(Accepted(FileOf(chunks)));
    }
}

TEST(PictureFormat, IsRefusedWithAHeaderThatCannotBe) {
    for (const Chunks& picture : Samples()) {
        for (std::size_t byte = 0; byte < 13; ++byte) {
            for (const int value : {0, 1, 2, 3, 4, 5, 6, 7, 8, 16, 64, 65, 128, 255}) {
                Chunks chunks = picture;
                chunks[0].data[byte] = static_cast<unsigned char>(value);
                const auto format = Accepted(FileOf(chunks));
                Bytes bytes = FileOf(chunks);
                glpng::PngImage image;
                if (glpng::DecodePng(OpenMemory(bytes).get(), maxSide, image)) {
                    EXPECT_TRUE(format.has_value()) << "byte " << byte << " is " << value;
                }
            }
        }
    }
    for (const std::size_t byte : {10U, 11U, 12U}) {
        Chunks chunks = Samples()[0];
        chunks[0].data[byte] = 2;
        EXPECT_FALSE(Accepted(FileOf(chunks)).has_value()) << "byte " << byte;
    }
}

TEST(PictureFormat, IsRefusedWhenASideIsTooLongOrNone) {
    const Bytes file = Encode({.rows = {1, 2, 3}});
    EXPECT_TRUE(Accepted(gltest::WithClaimedSize(file, 64, 64)).has_value());
    for (const auto& [width, height] : {std::pair{65U, 1U}, {1U, 65U}, {0U, 1U}, {1U, 0U}}) {
        EXPECT_FALSE(Accepted(gltest::WithClaimedSize(file, width, height)).has_value());
    }
}

TEST(PictureFormat, IsRefusedWithMorePixelsThanTheLimit) {
    const Bytes file = Encode({.colourType = PNG_COLOR_TYPE_RGB_ALPHA, .rows = {1, 2, 3, 4}});
    for (const auto& [height, isAccepted] : {std::pair{4096U, true}, {4097U, false}}) {
        Bytes bytes = gltest::WithClaimedSize(file, 16384, height);
        glpng::PictureFormat format;
        EXPECT_EQ(glpng::ReadPictureFormat(OpenMemory(bytes).get(), 0x7FFFFFFF, format),
                  isAccepted);
    }
}

TEST(PictureFormat, IsRefusedCutShortAnywhere) {
    for (const Chunks& picture : Samples()) {
        const Bytes file = FileOf(picture);
        for (std::size_t size = 1; size < file.size(); ++size) {
            const Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_FALSE(Accepted(part).has_value()) << size;
        }
    }
}

TEST(PictureFormat, IsRefusedWithAnyBitFlipped) {
    for (const Chunks& picture : Samples()) {
        const Bytes file = FileOf(picture);
        for (std::size_t bit = 0; bit < 8 * file.size(); ++bit) {
            Bytes flipped = file;
            flipped[bit / 8] = static_cast<unsigned char>(flipped[bit / 8] ^ 1U << bit % 8);
            Compare(flipped, "bit " + std::to_string(bit));
        }
    }
}
