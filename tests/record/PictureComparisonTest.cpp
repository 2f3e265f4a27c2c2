// The comparison that the kept pictures rely on, on pictures made for it.
#include "PictureComparison.h"

#include <gtest/gtest.h>

#include <algorithm>

using recordtest::Compare;
using recordtest::Image;

namespace {

/// 384 by 288, no two places alike.
Image Pattern() {
    Image image = {384, 288, {}};
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            image.bytes.push_back(static_cast<unsigned char>(x / 2));
            image.bytes.push_back(static_cast<unsigned char>(y / 2));
            image.bytes.push_back(static_cast<unsigned char>((x + y) / 4));
        }
    }
    return image;
}

std::size_t ByteIndex(const Image& image, int x, int y) {
    const auto width = static_cast<std::size_t>(image.width);
    return 3 * (static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x));
}

void Add(Image& image, int x, int y, std::size_t channel, int amount) {
    unsigned char& byte = image.bytes.at(ByteIndex(image, x, y) + channel);
    byte = static_cast<unsigned char>(std::clamp(byte + amount, 0, 255));
}

TEST(PictureComparison, TakesRoundingForTheSame) {
    Image other = Pattern();
    for (int y = 0; y < other.height; ++y) {
        for (int x = 0; x < other.width; ++x) {
            Add(other, x, y, static_cast<std::size_t>(x + y) % 3, (x * y) % 7 - 3);
        }
    }
    EXPECT_EQ(Compare(Pattern(), other).complaint, "");
    EXPECT_EQ(Compare(Pattern(), Pattern()).blurred, 0);
}

TEST(PictureComparison, TakesAFewPixelsAtEdgesForTheSame) {
    Image other = Pattern();
    for (int i = 0; i < 250; ++i) { // 0.2 %, never five of them close together
        Add(other, i * 383 / 250, (i * 37) % 288, static_cast<std::size_t>(i) % 3, 200);
    }
    EXPECT_EQ(Compare(Pattern(), other).complaint, "");
}

TEST(PictureComparison, FindsManyPixelsThatAreALittleOff) {
    Image other = Pattern();
    for (int i = 0; i < 600; ++i) { // 0.54 %
        Add(other, i % 384, 7 * (i / 384), 0, 5);
    }
    EXPECT_NE(Compare(Pattern(), other).complaint, "");
}

TEST(PictureComparison, FindsOneBarOfAnotherColour) {
    Image other = Pattern();
    for (int y = 200; y < 250; ++y) { // 0.09 % of the pixels
        Add(other, 100, y, 2, 150);
        Add(other, 101, y, 2, 150);
    }
    const recordtest::Difference difference = Compare(Pattern(), other);
    EXPECT_LT(difference.farPixels, 0.005);
    EXPECT_NE(difference.complaint, "");
}

TEST(PictureComparison, FindsAPictureUpsideDownOrOfAnotherSize) {
    Image other = Pattern();
    std::reverse(other.bytes.begin(), other.bytes.end());
    EXPECT_NE(Compare(Pattern(), other).complaint, "");
    other = Pattern();
    other.height -= 1;
    other.bytes.resize(other.bytes.size() - std::size_t{3} * 384);
    EXPECT_NE(Compare(Pattern(), other).complaint, "");
}

TEST(PictureComparison, ShowsWhereTheDifferenceIs) {
    Image other = Pattern();
    Add(other, 5, 6, 1, 100);
    const Image shown = recordtest::ShowDifference(Pattern(), other);
    ASSERT_EQ(shown.height, 3 * 288);
    EXPECT_EQ(shown.bytes.at(ByteIndex(shown, 5, 2 * 288 + 6)), 255);
    EXPECT_EQ(shown.bytes.at(ByteIndex(shown, 6, 2 * 288 + 6)), 0);
}

} // namespace
