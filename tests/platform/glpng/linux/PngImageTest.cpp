// The decoder by itself: what it may need, and where it reads.
#include "PngImage.h"

#include "PngFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <utility>

using gltest::Bytes;
using gltest::Encode;

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::unique_ptr<std::FILE, FileCloser> Open(Bytes& bytes) {
    return std::unique_ptr<std::FILE, FileCloser>(fmemopen(bytes.data(), bytes.size(), "rb"));
}

Bytes OneRgbaPixel() {
    return Encode({.colourType = PNG_COLOR_TYPE_RGB_ALPHA, .rows = {1, 2, 3, 4}});
}

} // namespace

TEST(PngImage, AllocatesAsMuchAsTheLimit) {
    Bytes bytes = gltest::WithClaimedSize(OneRgbaPixel(), 16384, 4096);
    glpng::PngImage image;

    EXPECT_FALSE(glpng::DecodePng(Open(bytes).get(), 16384, image)); // its data end early

    EXPECT_NE(image.pixels, nullptr);
}

TEST(PngImage, AllocatesNothingForAHeaderThatClaimsMoreThanTheLimit) {
    for (const auto& [width, height] : {std::pair{16384U, 4097U}, std::pair{16385U, 4096U},
                                        std::pair{0x7FFFFFFFU, 0x7FFFFFFFU}}) {
        Bytes bytes = gltest::WithClaimedSize(OneRgbaPixel(), width, height);
        glpng::PngImage image;

        EXPECT_FALSE(glpng::DecodePng(Open(bytes).get(), 0x7FFFFFFF, image));

        EXPECT_EQ(image.pixels, nullptr) << width << " by " << height;
    }
}

TEST(PngImage, AllocatesNothingForASideLongerThanAllowed) {
    for (const auto& [width, height] : {std::pair{5U, 1U}, std::pair{1U, 5U}}) {
        Bytes bytes = gltest::WithClaimedSize(OneRgbaPixel(), width, height);
        glpng::PngImage image;

        EXPECT_FALSE(glpng::DecodePng(Open(bytes).get(), 4, image));

        EXPECT_EQ(image.pixels, nullptr) << width << " by " << height;
    }
}

TEST(PngImage, StartsAtTheFilesPositionAndIgnoresWhatFollows) {
    Bytes bytes = {'a', 'b'};
    for (const unsigned char byte : OneRgbaPixel()) {
        bytes.push_back(byte);
    }
    bytes.push_back('c');
    const auto file = Open(bytes);
    ASSERT_EQ(std::fseek(file.get(), 2, SEEK_SET), 0);
    glpng::PngImage image;

    ASSERT_TRUE(glpng::DecodePng(file.get(), 1, image));

    EXPECT_EQ(image.pixels[0], 1);
    EXPECT_EQ(image.pixels[3], 4);
}
