// Damaged PNG files: shown whole, or refused.
#include "PngImage.h"

#include "PngChunks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

using gltest::Bytes;
using gltest::ChunksOf;
using gltest::Encode;
using gltest::FileOf;
using gltest::PngChunk;
using gltest::PngFile;

using Chunks = std::vector<PngChunk>;

// The pixels; none: the file is refused.
static std::optional<Bytes> Decoded(Bytes bytes) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        fmemopen(bytes.data(), bytes.size(), "rb"), std::fclose);
    glpng::PngImage image;
    if (!glpng::DecodePng(file.get(), 16384, image)) {
        return std::nullopt;
    }
    return Bytes(image.pixels.get(), image.pixels.get() + image.RowBytes() * image.height);
}

// IHDR, IDAT, IEND.
static const Chunks rgb = ChunksOf(Encode({.width = 2, .rows = {10, 20, 30, 40, 50, 60}}));
static const Bytes rgbPixels = {10, 20, 30, 40, 50, 60};

// IHDR, PLTE, tRNS, IDAT, IEND.
static const Chunks palette = ChunksOf(Encode({.width = 2,
                                               .colourType = PNG_COLOR_TYPE_PALETTE,
                                               .rows = {1, 0},
                                               .palette = {{1, 2, 3}, {40, 50, 60}},
                                               .paletteAlpha = {99, 77}}));

static const Chunks grey =
    ChunksOf(Encode({.colourType = PNG_COLOR_TYPE_GRAY, .depth = 2, .rows = {0x80}}));

static const Chunks rgba =
    ChunksOf(Encode({.colourType = PNG_COLOR_TYPE_RGB_ALPHA, .rows = {1, 2, 3, 4}}));

static const PngChunk colours = {.name = "PLTE", .data = {1, 2, 3, 4, 5, 6}};
static const PngChunk gamma = {.name = "gAMA", .data = {0, 0, 0xB1, 0x8F}};
static const PngChunk noPixels = {.name = "IDAT"};

static Chunks With(Chunks chunks, std::size_t at, const PngChunk& chunk) {
    chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(at), chunk);
    return chunks;
}

static Chunks Without(Chunks chunks, std::size_t at) {
    chunks.erase(chunks.begin() + static_cast<std::ptrdiff_t>(at));
    return chunks;
}

static Chunks Swapped(Chunks chunks, std::size_t one, std::size_t other) {
    std::swap(chunks.at(one), chunks.at(other));
    return chunks;
}

static Chunks WithData(Chunks chunks, std::size_t at, const Bytes& data) {
    chunks.at(at).data = data;
    return chunks;
}

// With @p difference bytes more, or fewer.
static Chunks Resized(Chunks chunks, std::size_t at, int difference) {
    Bytes& data = chunks.at(at).data;
    data.resize(data.size() + static_cast<std::size_t>(difference));
    return chunks;
}

static PngChunk WithWrongChecksum(PngChunk chunk) {
    chunk.checksumIsWrong = true;
    return chunk;
}

static Chunks WithWrongChecksum(Chunks chunks, std::size_t at) {
    chunks.at(at).checksumIsWrong = true;
    return chunks;
}

struct Damage {
    const char* name;
    Chunks (*chunks)();
};

static std::ostream& operator<<(std::ostream& out, const Damage& damage) {
    return out << damage.name;
}

static std::string NameOf(const testing::TestParamInfo<Damage>& test) {
    return test.param.name;
}

// In what pixels do not depend on.

static const Damage harmless[] = {
    {"None", [] { return rgb; }},
    {"WrongChecksum", [] { return With(rgb, 1, WithWrongChecksum(gamma)); }},
    {"WrongChecksumBehindPixels", [] { return With(rgb, 2, WithWrongChecksum(gamma)); }},
    {"WrongLength", [] { return With(rgb, 1, {.name = "gAMA", .data = {1}}); }},
    {"Twice", [] { return With(With(rgb, 1, gamma), 1, gamma); }},
    {"BehindPixels", [] { return With(rgb, 2, gamma); }},
    {"Senseless", [] { return With(rgb, 1, {.name = "iCCP", .data = Bytes(100, 0xFF)}); }},
    {"Long", [] { return With(rgb, 1, {.name = "tEXt", .data = Bytes(9'000'000, 'x')}); }},
    {"Unknown", [] { return With(rgb, 1, {.name = "abCd", .data = {1, 2, 3}}); }},
    {"WithAReservedName", [] { return With(rgb, 1, {.name = "abcd"}); }},
    {"WithAnImpossibleName", [] { return With(rgb, 1, {.name = "a111"}); }},
    {"UnusedPalette", [] { return With(rgb, 1, colours); }},
    {"EmptyPixelChunks", [] { return With(With(rgb, 2, noPixels), 1, noPixels); }},
    {"MoreBehindPixels", [] { return Resized(rgb, 1, 100); }},
    {"MuchMoreBehindPixels", [] { return Resized(rgb, 1, 9'000'000); }},
    {"MoreChunksBehindPixels",
     [] { return With(rgb, 2, {.name = "IDAT", .data = Bytes(100, 'x')}); }},
    {"RowsBehindThePictureThatDoNotEnd", // libpng is not let inflate them all
     [] {
         PngFile file = {.width = 2, .height = 30'000, .compression = 0, .rows = rgbPixels};
         file.rows.resize(file.rows.size() * file.height);
         const Chunks chunks = ChunksOf(gltest::WithClaimedSize(Encode(file), 2, 1));
         return Without(chunks, chunks.size() - 2);
     }},
    {"MoreBehindTheEnd", [] { return With(rgb, 3, WithWrongChecksum(noPixels)); }},
};

class HarmlesslyDamagedPng : public testing::TestWithParam<Damage> {};

TEST_P(HarmlesslyDamagedPng, IsShownWhole) {
    EXPECT_EQ(Decoded(FileOf(GetParam().chunks())), rgbPixels);
}

INSTANTIATE_TEST_SUITE_P(Chunk, HarmlesslyDamagedPng, testing::ValuesIn(harmless), NameOf);

// In what they do depend on.

static const Damage harmful[] = {
    {"ChecksumOfTheHeader", [] { return WithWrongChecksum(rgb, 0); }},
    {"ChecksumOfThePalette", [] { return WithWrongChecksum(palette, 1); }},
    {"ChecksumOfAnUnusedPalette", [] { return With(rgb, 1, WithWrongChecksum(colours)); }},
    {"ChecksumOfTheTransparency", [] { return WithWrongChecksum(palette, 2); }},
    {"ChecksumOfThePixels", [] { return WithWrongChecksum(rgb, 1); }},
    {"ChecksumBehindThePixels", [] { return With(rgb, 2, WithWrongChecksum(noPixels)); }},
    {"ChecksumFarBehindThePixels", [] { return WithWrongChecksum(Resized(rgb, 1, 50'000), 1); }},
    {"ChecksumOfTheEnd", [] { return WithWrongChecksum(rgb, 2); }},

    {"ShorterHeader", [] { return Resized(rgb, 0, -1); }},
    {"LongerHeader", [] { return Resized(rgb, 0, 1); }},
    {"EmptyPalette", [] { return WithData(palette, 1, {}); }},
    {"PaletteOfPartOfAColour", [] { return Resized(palette, 1, -1); }},
    {"PaletteTooLong", [] { return Resized(palette, 1, 3 * 255); }},
    {"UnusedPaletteOfPartOfAColour", [] { return With(rgb, 1, {.name = "PLTE", .data = {1, 2}}); }},
    {"EmptyTransparency", [] { return WithData(palette, 2, {}); }},
    {"TransparencyLongerThanThePalette", [] { return Resized(palette, 2, 1); }},
    {"TransparencyTooLong", [] { return Resized(palette, 2, 1000); }},
    {"TransparencyOfPartOfAColour", [] { return With(rgb, 1, {.name = "tRNS", .data = {0, 1}}); }},
    {"TransparencyOfMoreThanAGrey",
     [] { return With(grey, 1, {.name = "tRNS", .data = {0, 1, 0}}); }},
    {"LongerEnd", [] { return Resized(rgb, 2, 1); }},
    {"LongerEndFarBehindThePixels", [] { return Resized(Resized(rgb, 1, 50'000), 2, 1); }},
    {"PixelsCutShort", [] { return Resized(rgb, 1, -10); }},
    {"PixelsWithoutTheirEnd", [] { return Resized(rgb, 1, -4); }},
    {"NoPixels", [] { return Without(rgb, 1); }},
    {"EmptyPixels", [] { return WithData(rgb, 1, {}); }},
    {"NoEnd", [] { return Without(rgb, 2); }},
    {"NoPalette", [] { return Without(Without(palette, 1), 1); }},
    {"NoHeader", [] { return Without(rgb, 0); }},

    {"TwoHeaders", [] { return With(rgb, 1, rgb.front()); }},
    {"TwoHeadersBehindPixels", [] { return With(rgb, 2, rgb.front()); }},
    {"TwoPalettes", [] { return With(palette, 1, palette[1]); }},
    {"TwoUnusedPalettes", [] { return With(With(rgb, 1, colours), 1, colours); }},
    {"TwoTransparencies", [] { return With(palette, 2, palette[2]); }},

    {"SomethingBeforeTheHeader", [] { return With(rgb, 0, gamma); }},
    {"SomethingUnknownBeforeTheHeader", [] { return With(rgb, 0, {.name = "abCd"}); }},
    {"PaletteBehindPixels", [] { return Swapped(palette, 1, 3); }},
    {"PaletteBehindTransparency", [] { return Swapped(palette, 1, 2); }},
    {"UnusedPaletteBehindTransparency",
     [] { return With(With(rgb, 1, colours), 1, {.name = "tRNS", .data = Bytes(6)}); }},
    {"UnusedPaletteBehindPixels", [] { return With(rgb, 2, colours); }},
    {"TransparencyBehindPixels", [] { return Swapped(palette, 2, 3); }},
    {"UnusedTransparencyBehindPixels",
     [] { return With(rgb, 2, {.name = "tRNS", .data = Bytes(6)}); }},
    {"SomethingAmongPixels",
     [] {
         const Bytes& data = rgb[1].data;
         const auto middle = data.begin() + static_cast<std::ptrdiff_t>(data.size() / 2);
         return With(With(WithData(rgb, 1, Bytes(data.begin(), middle)), 2,
                          {.name = "IDAT", .data = Bytes(middle, data.end())}),
                     2, gamma);
     }},
    {"SomethingAmongWhatFollowsPixels", [] { return With(With(rgb, 2, noPixels), 2, gamma); }},
    {"TransparencyBesideAlpha", [] { return With(rgba, 1, {.name = "tRNS", .data = Bytes(6)}); }},
    {"PaletteOfGreys", [] { return With(grey, 1, colours); }},
    {"UnknownButNeeded", [] { return With(rgb, 1, {.name = "ABCD"}); }},
    {"UnknownButNeededBehindPixels", [] { return With(rgb, 2, {.name = "ABCD"}); }},
};

class HarmfullyDamagedPng : public testing::TestWithParam<Damage> {};

TEST_P(HarmfullyDamagedPng, IsRefused) {
    EXPECT_EQ(Decoded(FileOf(GetParam().chunks())), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Chunk, HarmfullyDamagedPng, testing::ValuesIn(harmful), NameOf);

// Indices beyond the palette.

struct Indexed {
    int depth; ///< bits an index
    bool interlaced;
    bool hasAlpha;
};

static std::ostream& operator<<(std::ostream& out, const Indexed& file) {
    return out << "By" << file.depth << "Bits" << (file.interlaced ? "Interlaced" : "")
               << (file.hasAlpha ? "WithAlpha" : "");
}

class PngOfIndices : public testing::TestWithParam<Indexed> {
protected:
    static constexpr std::size_t width = 9;
    static constexpr std::size_t height = 7;

    // One colour fewer than the depth allows, or for 8 bits a handful.
    PngOfIndices() {
        const int count = GetParam().depth == 8 ? 5 : (1 << GetParam().depth) - 1;
        for (int i = 0; i < count; ++i) {
            palette.push_back({static_cast<png_byte>(i + 1), static_cast<png_byte>(2 * i),
                               static_cast<png_byte>(200 - i)});
        }
    }

    Bytes Encoded(const std::vector<std::size_t>& indices) const {
        PngFile file = {.width = width,
                        .height = height,
                        .colourType = PNG_COLOR_TYPE_PALETTE,
                        .depth = GetParam().depth,
                        .interlaced = GetParam().interlaced,
                        .palette = palette,
                        .paletteAlpha = paletteAlpha};
        const auto depth = static_cast<std::size_t>(file.depth);
        const std::size_t rowBytes = (width * depth + 7) / 8;
        file.rows.resize(rowBytes * height);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            const std::size_t bit = i % width * depth;
            unsigned char& byte = file.rows[i / width * rowBytes + bit / 8];
            byte = static_cast<unsigned char>(byte | indices[i] << (8 - depth - bit % 8));
        }
        return Encode(file);
    }

    // Every colour there is, again and again.
    std::vector<std::size_t> Indices() const {
        std::vector<std::size_t> indices(width * height);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            indices[i] = i % palette.size();
        }
        return indices;
    }

    std::vector<png_color> palette;
    const Bytes paletteAlpha = GetParam().hasAlpha ? Bytes{128} : Bytes{};
};

TEST_P(PngOfIndices, HasTheColoursOfItsPalette) {
    Bytes expected;
    for (const std::size_t index : Indices()) {
        const png_color& colour = palette[index];
        expected.insert(expected.end(), {colour.red, colour.green, colour.blue});
        if (GetParam().hasAlpha) {
            expected.push_back(index == 0 ? 128 : 255);
        }
    }

    EXPECT_EQ(Decoded(Encoded(Indices())), expected);
}

TEST_P(PngOfIndices, IsRefusedWhereverOneIsBeyondThePalette) {
    for (const std::size_t beyond : {palette.size(), (std::size_t{1} << GetParam().depth) - 1}) {
        for (std::size_t i = 0; i < width * height; ++i) {
            std::vector<std::size_t> indices = Indices();
            indices[i] = beyond;
            EXPECT_EQ(Decoded(Encoded(indices)), std::nullopt) << beyond << " as pixel " << i;
        }
    }
}

static constexpr Indexed indexed[] = {
    {1, false, false}, {1, false, true}, {1, true, false}, {1, true, true},
    {2, false, false}, {2, false, true}, {2, true, false}, {2, true, true},
    {4, false, false}, {4, false, true}, {4, true, false}, {4, true, true},
    {8, false, false}, {8, false, true}, {8, true, false}, {8, true, true},
};

INSTANTIATE_TEST_SUITE_P(File, PngOfIndices, testing::ValuesIn(indexed),
                         testing::PrintToStringParamName());
