// What libpng allocates for files whose chunks claim to be long.
#include "PngImage.h"

#include "PngChunks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

using gltest::Bytes;
using gltest::ChunksOf;
using gltest::Encode;
using gltest::FileOf;
using gltest::PngChunk;

namespace {

// libpng needs about 50 KiB for a small picture.
constexpr std::size_t plenty = std::size_t{1} << 20;

std::size_t liveBytes = 0;
std::size_t mostBytes = 0;

// A block begins with its size.
constexpr std::size_t sizeBytes = alignof(std::max_align_t);

png_voidp Allocate(png_structp, png_alloc_size_t size) {
    mostBytes = std::max(mostBytes, liveBytes + size);
    auto* block = size < plenty ? static_cast<char*>(std::malloc(sizeBytes + size)) : nullptr;
    if (block == nullptr) {
        return nullptr;
    }
    *reinterpret_cast<std::size_t*>(block) = size;
    liveBytes += size;
    return block + sizeBytes;
}

void Free(png_structp, png_voidp memory) {
    if (memory != nullptr) {
        char* block = static_cast<char*>(memory) - sizeBytes;
        liveBytes -= *reinterpret_cast<std::size_t*>(block);
        std::free(block);
    }
}

} // namespace

// The linker leads the decoder's call here (--wrap).
extern "C" png_structp Create(const char* version, void* context, png_error_ptr error,
                              png_error_ptr warning) __asm__("__wrap_png_create_read_struct");

extern "C" png_structp Create(const char* version, void* context, png_error_ptr error,
                              png_error_ptr warning) {
    return png_create_read_struct_2(version, context, error, warning, nullptr, Allocate, Free);
}

static bool Decode(const Bytes& bytes) {
    mostBytes = 0;
    Bytes copy = bytes;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        fmemopen(copy.data(), copy.size(), "rb"), std::fclose);
    glpng::PngImage image;
    const bool decoded = glpng::DecodePng(file.get(), 16384, image);
    EXPECT_GT(mostBytes, 0U);
    EXPECT_EQ(liveBytes, 0U);
    return decoded;
}

static std::vector<std::vector<PngChunk>> Pictures() {
    return {ChunksOf(Encode({.rows = {1, 2, 3}})),
            ChunksOf(Encode({.colourType = PNG_COLOR_TYPE_PALETTE,
                             .rows = {0},
                             .palette = {{1, 2, 3}, {40, 50, 60}},
                             .paletteAlpha = {99}}))};
}

TEST(PngMemory, IsNotAllocatedForWhatAChunkOfAFewBytesClaims) {
    const std::vector<std::string> names = {
        "IHDR", "PLTE", "tRNS", "IDAT", "IEND", "ABCD", "abCd", "abcd", "acTL", "bKGD", "cHRM",
        "cICP", "cLLI", "eXIf", "fcTL", "fdAT", "gAMA", "hIST", "iCCP", "iTXt", "mDCV", "oFFs",
        "pCAL", "pHYs", "sBIT", "sCAL", "sPLT", "sRGB", "sTER", "tEXt", "tIME", "zTXt"};
    for (const std::vector<PngChunk>& picture : Pictures()) {
        for (std::size_t place = 1; place < picture.size(); ++place) {
            for (const std::string& name : names) {
                for (const std::uint32_t length : {100'000'000U, 0x40000000U, 0x7FFFFFFFU}) {
                    auto chunks = picture;
                    chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(place),
                                  {.name = name, .data = Bytes(10, 'x'), .claimedLength = length});

                    EXPECT_FALSE(Decode(FileOf(chunks)));

                    EXPECT_LT(mostBytes, plenty) << name << " as chunk " << place;
                }
            }
        }
    }
}

TEST(PngMemory, IsNotAllocatedForLongChunksThatNoPixelDependsOn) {
    for (const char* name : {"abCd", "eXIf", "iCCP", "iTXt", "sPLT", "tEXt", "zTXt"}) {
        for (const std::vector<PngChunk>& picture : Pictures()) {
            for (std::size_t place = 1; place < picture.size(); ++place) {
                auto chunks = picture;
                chunks.insert(chunks.begin() + static_cast<std::ptrdiff_t>(place),
                              {.name = name, .data = Bytes(4 * plenty, 'x')});

                EXPECT_TRUE(Decode(FileOf(chunks)));

                EXPECT_LT(mostBytes, plenty) << name << " as chunk " << place;
            }
        }
    }
}
