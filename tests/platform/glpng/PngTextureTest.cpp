// PNG files as OpenGL textures: what is uploaded of each kind of file.
#include "PngTextureFixture.h"

#include "Picture.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

using gltest::BoundTexture;
using gltest::Bytes;
using gltest::Encode;
using gltest::Integer;
using gltest::LevelParameter;
using gltest::PngFile;
using gltest::ReadTexture;
using gltest::Rgba;
using gltest::SevenByFive;

namespace {

class PngTexture : public gltest::PngTextureFixture {};

GLint TextureParameter(GLenum parameter) {
    GLint value = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, parameter, &value);
    return value;
}

std::vector<Rgba> TextureColours() {
    const gltest::Picture picture = ReadTexture();
    std::vector<Rgba> colours;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            colours.push_back(picture.At(x, y));
        }
    }
    return colours;
}

std::vector<Rgba> ColoursOfSevenByFive() {
    std::vector<Rgba> colours;
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            colours.push_back({30 * x, 50 * y, 10 * x + 20 * y});
        }
    }
    return colours;
}

} // namespace

// Kinds of file.

TEST_F(PngTexture, HasTheColoursOfAnRgbFile) {
    EXPECT_NE(Bind(SevenByFive()), 0U);

    EXPECT_EQ(TextureColours(), ColoursOfSevenByFive());
}

struct Kind {
    const char* name;
    PngFile file;
    std::vector<Rgba> colours;
};

static std::ostream& operator<<(std::ostream& out, const Kind& kind) {
    return out << kind.name;
}

class PngTextureOfAKind : public gltest::PngTextureFixture,
                          public testing::WithParamInterface<Kind> {};

TEST_P(PngTextureOfAKind, HasItsColours) {
    EXPECT_NE(Bind(GetParam().file), 0U);

    EXPECT_EQ(TextureColours(), GetParam().colours);
}

static const Kind kinds[] = {
    {"HasTheColoursAndAlphaOfAnRgbaFile",
     {.width = 2, .colourType = PNG_COLOR_TYPE_RGB_ALPHA, .rows = {10, 20, 30, 40, 50, 60, 70, 0}},
     {{10, 20, 30, 40}, {50, 60, 70, 0}}},
    {"ShowsGreyAsEqualChannels",
     {.width = 3, .colourType = PNG_COLOR_TYPE_GRAY, .rows = {0, 100, 255}},
     {{0, 0, 0}, {100, 100, 100}, {255, 255, 255}}},
    {"SpreadsTwoBitGreyOverTheWholeRange",
     {.width = 4, .colourType = PNG_COLOR_TYPE_GRAY, .depth = 2, .rows = {0b00'01'10'11}},
     {{0, 0, 0}, {85, 85, 85}, {170, 170, 170}, {255, 255, 255}}},
    {"KeepsTheAlphaOfGreyWithAlpha",
     {.width = 2, .colourType = PNG_COLOR_TYPE_GRAY_ALPHA, .rows = {100, 7, 200, 250}},
     {{100, 100, 100, 7}, {200, 200, 200, 250}}},
    {"LooksColoursUpInThePalette",
     {.width = 3,
      .colourType = PNG_COLOR_TYPE_PALETTE,
      .rows = {2, 0, 1},
      .palette = {{1, 2, 3}, {40, 50, 60}, {200, 210, 220}}},
     {{200, 210, 220}, {1, 2, 3}, {40, 50, 60}}},
    {"UnpacksAPaletteOfOneBit",
     {.width = 3,
      .colourType = PNG_COLOR_TYPE_PALETTE,
      .depth = 1,
      .rows = {0b101'00000},
      .palette = {{1, 2, 3}, {40, 50, 60}}},
     {{40, 50, 60}, {1, 2, 3}, {40, 50, 60}}},
    {"TakesThePalettesAlphaAndLeavesTheRestOpaque",
     {.width = 2,
      .colourType = PNG_COLOR_TYPE_PALETTE,
      .rows = {0, 1},
      .palette = {{1, 2, 3}, {40, 50, 60}},
      .paletteAlpha = {99}},
     {{1, 2, 3, 99}, {40, 50, 60, 255}}},
    {"MakesTheTransparentGreyTransparent",
     {.width = 2,
      .colourType = PNG_COLOR_TYPE_GRAY,
      .rows = {100, 101},
      .transparent = png_color_16{.index = 0, .red = 0, .green = 0, .blue = 0, .gray = 100}},
     {{100, 100, 100, 0}, {101, 101, 101, 255}}},
    {"MakesTheTransparentRgbTransparent",
     {.width = 2,
      .rows = {10, 20, 30, 10, 20, 31},
      .transparent = png_color_16{.index = 0, .red = 10, .green = 20, .blue = 30, .gray = 0}},
     {{10, 20, 30, 0}, {10, 20, 31, 255}}},
    {"ComparesASixteenBitTransparentColourInAllItsBits",
     {.width = 2,
      .colourType = PNG_COLOR_TYPE_GRAY,
      .depth = 16,
      .rows = {0x80, 0x80, 0x80, 0x81},
      .transparent = png_color_16{.index = 0, .red = 0, .green = 0, .blue = 0, .gray = 0x8080}},
     {{0x80, 0x80, 0x80, 0}, {0x80, 0x80, 0x80}}},
    {"RoundsSixteenBitsToTheNearestOfEight",
     // 0x4079 lies 64.2 two-hundred-fifty-fifths up the range, 0x40FE 64.7.
     {.width = 4,
      .colourType = PNG_COLOR_TYPE_GRAY,
      .depth = 16,
      .rows = {0x00, 0x00, 0x40, 0x79, 0x40, 0xFE, 0xFF, 0xFF}},
     {{0, 0, 0}, {64, 64, 64}, {65, 65, 65}, {255, 255, 255}}},
    {"TakesASinglePixel", {.rows = {12, 34, 56}}, {{12, 34, 56}}},
    {"DoesNotApplyTheFilesGamma",
     {.width = 2, .rows = {10, 100, 200, 60, 120, 180}, .gamma = 1.0},
     {{10, 100, 200}, {60, 120, 180}}},
};

INSTANTIATE_TEST_SUITE_P(File, PngTextureOfAKind, testing::ValuesIn(kinds),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(PngTexture, PutsAnInterlacedFileTogether) {
    PngFile file = SevenByFive();
    file.interlaced = true;

    EXPECT_NE(Bind(file), 0U);

    EXPECT_EQ(TextureColours(), ColoursOfSevenByFive());
}

TEST_F(PngTexture, IsMadeWhateverFollowsThePictureInItsData) {
    const Bytes twoRows = Encode({.height = 2, .rows = {10, 20, 30, 40, 50, 60}});
    EXPECT_NE(BindPath(Store(gltest::WithClaimedSize(twoRows, 1, 1))), 0U);
}

TEST_F(PngTexture, HasTheFilesFirstRowAtTheLowEndOfT) {
    pngBind(Store(Encode({.height = 2, .rows = {255, 0, 0, 0, 0, 255}})).c_str(), PNG_NOMIPMAPS,
            PNG_ALPHA, nullptr, GL_REPEAT, GL_NEAREST, GL_NEAREST);

    glEnable(GL_TEXTURE_2D);
    glBegin(GL_QUADS); // the lower half of the buffer has t from 0 to 0.5
    glTexCoord2f(0, 0);
    glVertex2f(-1, -1);
    glTexCoord2f(1, 0);
    glVertex2f(1, -1);
    glTexCoord2f(1, 1);
    glVertex2f(1, 1);
    glTexCoord2f(0, 1);
    glVertex2f(-1, 1);
    glEnd();

    const gltest::Picture picture = gltest::ReadDrawn(16, 16);
    EXPECT_TRUE(PixelIs(picture, 8, 12, {255, 0, 0}, 0));
    EXPECT_TRUE(PixelIs(picture, 8, 4, {0, 0, 255}, 0));
}

// The texture made.

TEST_F(PngTexture, HasAlphaOnlyWhenTheFileHas) {
    Bind({.colourType = PNG_COLOR_TYPE_GRAY_ALPHA, .rows = {1, 2}});
    EXPECT_EQ(LevelParameter(GL_TEXTURE_ALPHA_SIZE), 8);
    Bind({.colourType = PNG_COLOR_TYPE_GRAY, .rows = {1}});
    EXPECT_EQ(LevelParameter(GL_TEXTURE_ALPHA_SIZE), 0);
}

TEST_F(PngTexture, IsLeftBound) {
    const unsigned int name = Bind(SevenByFive());

    EXPECT_EQ(static_cast<unsigned int>(BoundTexture()), name);
}

TEST_F(PngTexture, IsANewOneEachTime) {
    const unsigned int first = Bind(SevenByFive());
    const unsigned int second = Bind(SevenByFive());

    EXPECT_NE(first, second);
    EXPECT_TRUE(glIsTexture(first));
}

TEST_F(PngTexture, IsFilteredAndRepeatedAsAsked) {
    pngBind(Store(Encode(SevenByFive())).c_str(), PNG_NOMIPMAPS, PNG_ALPHA, nullptr, GL_CLAMP,
            GL_LINEAR, GL_NEAREST);

    EXPECT_EQ(TextureParameter(GL_TEXTURE_WRAP_S), GL_CLAMP);
    EXPECT_EQ(TextureParameter(GL_TEXTURE_WRAP_T), GL_CLAMP);
    EXPECT_EQ(TextureParameter(GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(TextureParameter(GL_TEXTURE_MAG_FILTER), GL_NEAREST);
}

TEST_F(PngTexture, HasOneLevelAndRaisesNoError) {
    Bind(SevenByFive());

    GLint width = -1;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(PngTexture, ReportsSizeDepthAndAlphaOfTheFile) {
    pngInfo info = {};
    Bind({.width = 3,
          .height = 2,
          .colourType = PNG_COLOR_TYPE_GRAY_ALPHA,
          .depth = 16,
          .rows = Bytes(24)},
         &info);

    EXPECT_EQ(info.Width, 3U);
    EXPECT_EQ(info.Height, 2U);
    EXPECT_EQ(info.Depth, 16U);
    EXPECT_EQ(info.Alpha, 8U);
}

TEST_F(PngTexture, ReportsNoAlphaOfAFileWithout) {
    pngInfo info = {9, 9, 9, 9};
    Bind({.width = 3, .colourType = PNG_COLOR_TYPE_GRAY, .depth = 1, .rows = {0}}, &info);

    EXPECT_EQ(info.Width, 3U);
    EXPECT_EQ(info.Height, 1U);
    EXPECT_EQ(info.Depth, 1U);
    EXPECT_EQ(info.Alpha, 0U);
}

TEST_F(PngTexture, NeitherHeedsNorChangesHowPixelsAreUnpacked) {
    const std::vector<std::pair<GLenum, GLint>> state = {
        {GL_UNPACK_SWAP_BYTES, 1}, {GL_UNPACK_LSB_FIRST, 1},   {GL_UNPACK_ROW_LENGTH, 3},
        {GL_UNPACK_SKIP_ROWS, 2},  {GL_UNPACK_SKIP_PIXELS, 1}, {GL_UNPACK_ALIGNMENT, 8}};
    for (const auto& [parameter, value] : state) {
        glPixelStorei(parameter, value);
    }

    Bind(SevenByFive());

    EXPECT_EQ(TextureColours(), ColoursOfSevenByFive());
    for (const auto& [parameter, value] : state) {
        EXPECT_EQ(Integer(parameter), value);
    }
}

TEST_F(PngTexture, LeavesTheCallersErrorToTheCaller) {
    glEnable(GL_TEXTURE_WIDTH); // no capability

    EXPECT_NE(Bind(SevenByFive()), 0U);

    EXPECT_EQ(glGetError(), GLenum{GL_INVALID_ENUM});
}
