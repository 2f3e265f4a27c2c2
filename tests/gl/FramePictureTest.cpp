// Whole frames of the show: where the picture, the bars and the box are seen, and when.
#include "Show.h"

#include "Box.h"
#include "Loader.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

using gltest::Picture;
using gltest::PngFile;
using gltest::Rgba;
using gltest::SetPosition;
using gltest::Spectrum;
using namespace gltest::colours;

namespace {

// How far behind the eye's plane things are drawn.
constexpr double sceneZ = -1300;
constexpr double pictureZ = -2300;

// The picture quad, in the scene's units: 2000 by 1500, set back, stretched sideways by 1.3.
constexpr double pictureLeft = -720 - 1.3 * 250;
constexpr double pictureWidth = 1.3 * 2000;
constexpr double pictureTop = -540 - 250 + 1500;
constexpr double pictureHeight = 1500;

PngFile OneColour(const Rgba& colour) {
    return {.colourType = PNG_COLOR_TYPE_RGB_ALPHA,
            .rows = {
                static_cast<unsigned char>(colour.red), static_cast<unsigned char>(colour.green),
                static_cast<unsigned char>(colour.blue), static_cast<unsigned char>(colour.alpha)}};
}

// 400 by 300: red and green above blue and white.
PngFile FourQuarters() {
    PngFile file{.width = 400, .height = 300};
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            const Rgba colour = y < 150 ? (x < 200 ? red : green) : (x < 200 ? blue : white);
            for (const int channel : {colour.red, colour.green, colour.blue}) {
                file.rows.push_back(static_cast<unsigned char>(channel));
            }
        }
    }
    return file;
}

// The pixel that holds @p place; @p right and @p down move away from an edge that passes there.
testing::AssertionResult PixelAt(const Picture& picture, gltest::Show::Place place, int right,
                                 int down, const Rgba& expected) {
    return PixelIs(picture, static_cast<int>(std::floor(place.x)) + right,
                   static_cast<int>(std::floor(place.y)) + down, expected);
}

gltest::Show::Place OnPicture(double s, double t) {
    return gltest::Show::OnScreen(pictureLeft + s * pictureWidth, pictureTop - t * pictureHeight,
                                  pictureZ);
}

// Bands that differ from their neighbours, so that a bar of the wrong ones has another height.
void PlayUnevenSpectrum() {
    for (std::size_t band = 0; band < Spectrum().size(); ++band) {
        Spectrum()[band] = 0.01F * static_cast<float>(1 + band * 5 % 11);
    }
}

// The middle of the top of bar @p bar, 0 to 254, which shows bands 2 bar + 1 and 2 bar + 2.
gltest::Show::Place TopOfBar(int bar) {
    const std::size_t band = 2 * static_cast<std::size_t>(bar) + 1;
    const double level =
        static_cast<double>(Spectrum()[band]) + static_cast<double>(Spectrum()[band + 1]);
    return gltest::Show::OnScreen(-720 + 1.3 * 4.7 * (bar + 0.5), -540 + 4000 * level, sceneZ);
}

class FramePicture : public gltest::Show {
protected:
    // One that can be looked at, front in row 5's red, left side in row 2's green.
    static void EnlargeBox() {
        kasse->width = kasse->height = kasse->depth = 100.0F;
        kasse->colour[5][0] = 1.0F;
        kasse->colour[2][1] = 1.0F;
    }

    void DrawUntilTheBoxIsAlone() {
        AddPicture("credits", OneColour(white));
        SetPosition(30000);
        DrawFrame();
        EnlargeBox();
    }
};

} // namespace

// The picture.

TEST_F(FramePicture, HasThePictureWhereItBelongs) {
    AddPicture("skovr", OneColour(white));

    const Picture picture = DrawFrame();

    EXPECT_TRUE(PixelAt(picture, OnPicture(0, 0.5), -1, 0, black));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0, 0.5), 1, 0, white));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.2, 0), 0, -1, black));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.2, 0), 0, 1, white));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.2, 1), 0, -1, white));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.2, 1), 0, 1, black));
    EXPECT_TRUE(PixelIs(picture, 1023, 384, white)); // it goes on beyond the right edge
}

TEST_F(FramePicture, HasThePictureUprightAndUnscrolledAtFirst) {
    AddPicture("skovr", FourQuarters());

    const Picture picture = DrawFrame();

    EXPECT_TRUE(PixelAt(picture, OnPicture(0.5, 0.5), -3, -3, red));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.5, 0.5), 3, -3, green));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.5, 0.5), -3, 3, blue));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.5, 0.5), 3, 3, white));
}

TEST_F(FramePicture, ScrollsThePictureLeftByATwoHundredthOfItsWidth) {
    AddPicture("skovr", FourQuarters());

    DrawFrame();
    const Picture picture = DrawFrame();

    EXPECT_TRUE(PixelAt(picture, OnPicture(0.495, 0.5), -3, -3, red));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.495, 0.5), 3, -3, green));
}

TEST_F(FramePicture, RepeatsThePictureThatHasScrolledOut) {
    AddPicture("skovr", FourQuarters());

    globalAngle = 0.695F;
    DrawFrame();                         // scrolls the next one's picture by 0.7,
    const Picture picture = DrawFrame(); // so that its middle is at 0.8, its edge at 0.3

    EXPECT_TRUE(PixelAt(picture, OnPicture(0.3, 0.2), -3, 0, green));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.3, 0.2), 3, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.8, 0.2), -3, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnPicture(0.8, 0.2), 3, 0, green));
}

TEST_F(FramePicture, ShowsTheTitleUpTo14999AndTheCreditsUpTo29999) {
    AddPicture("skovr", OneColour(red));
    AddPicture("credits", OneColour(green));
    AddPicture("texture", OneColour(blue));
    const struct {
        unsigned int positionMs;
        Rgba colour;
    } moments[] = {{0, red},       {14999, red},   {15000, green},
                   {29999, green}, {30000, black}, {33000, black}};

    for (const auto& [positionMs, colour] : moments) {
        SetPosition(positionMs);
        EXPECT_TRUE(PixelIs(DrawFrame(), 700, 300, colour)) << "at " << positionMs << " ms";
    }
}

TEST_F(FramePicture, BlendsThePictureByItsAlpha) {
    AddPicture("skovr", OneColour({200, 100, 50, 128}));
    AddPicture("credits", OneColour({200, 100, 50, 0}));

    EXPECT_TRUE(PixelIs(DrawFrame(), 700, 300, {100, 50, 25}));
    SetPosition(15000);
    EXPECT_TRUE(PixelIs(DrawFrame(), 700, 300, black));
}

TEST_F(FramePicture, IsAWhiteQuadWhereThePictureIsMissing) {
    AddPicture("credits", OneColour(green));

    EXPECT_TRUE(PixelIs(DrawFrame(), 700, 300, white));
}

TEST_F(FramePicture, IsAWhiteQuadWhereThePictureIsBroken) {
    gltest::Bytes bytes = Encode(OneColour(red));
    bytes.resize(bytes.size() / 2);
    AddResource("skovr.png", bytes);
    AddPicture("credits", OneColour(green));

    EXPECT_TRUE(PixelIs(DrawFrame(), 700, 300, white));
}

// The bars.

TEST_F(FramePicture, HasEachBarAsHighAsItsTwoBandsAreLoud) {
    SetPosition(30000);
    PlayUnevenSpectrum();

    const Picture picture = DrawFrame();

    for (const int bar : {1, 2, 3, 40, 77, 125, 126, 200, 234}) {
        EXPECT_TRUE(PixelAt(picture, TopOfBar(bar), 0, -1, black)) << "bar " << bar;
        const gltest::Show::Place top = TopOfBar(bar);
        EXPECT_NE(picture.At(static_cast<int>(top.x), static_cast<int>(top.y) + 1), black)
            << "bar " << bar;
    }
}

TEST_F(FramePicture, ColoursTheBarsFromNearBlackOverGreenToWhite) {
    SetPosition(30000);
    Spectrum().fill(0.05F);

    const Picture picture = DrawFrame();

    const struct {
        int bar;
        Rgba colour;
    } bars[] = {{1, {3, 6, 2}},         {31, {64, 129, 32}},    {62, {128, 255, 64}},
                {124, {254, 255, 127}}, {125, {255, 255, 128}}, {234, {255, 255, 239}}};
    for (const auto& [bar, colour] : bars) {
        EXPECT_TRUE(PixelAt(picture, TopOfBar(bar), 0, 3, colour)) << "bar " << bar;
    }
}

TEST_F(FramePicture, HasTheBarsSideBySideWithoutGaps) {
    SetPosition(30000);
    Spectrum().fill(0.05F);

    const Picture picture = DrawFrame();

    const int y = static_cast<int>(TopOfBar(0).y) + 10;
    Rgba left = picture.At(0, y);
    for (int x = 1; x < width; ++x) { // each is as bright as its left neighbour, or brighter
        const Rgba colour = picture.At(x, y);
        ASSERT_GE(colour.green, left.green) << "at " << x;
        ASSERT_GE(colour.red, left.red) << "at " << x;
        ASSERT_GE(colour.blue, left.blue) << "at " << x;
        left = colour;
    }
    EXPECT_GT(left.blue, picture.At(512, y).blue);
}

TEST_F(FramePicture, HasTheBarsInFrontOfThePicture) {
    AddPicture("skovr", OneColour(blue));
    Spectrum().fill(0.05F);

    const Picture picture = DrawFrame();

    EXPECT_TRUE(PixelAt(picture, TopOfBar(62), 0, -2, blue));
    EXPECT_TRUE(PixelAt(picture, TopOfBar(62), 0, 2, {128, 255, 64}));
}

TEST_F(FramePicture, HasNoBarsInSilence) {
    SetPosition(30000);

    const Picture silent = DrawFrame();

    for (int x = 0; x < width; ++x) {
        ASSERT_TRUE(PixelIs(silent, x, height - 1, black, 0));
    }
}

// The box.

TEST_F(FramePicture, HasTheBoxAtRestInSilence) {
    DrawUntilTheBoxIsAlone();

    const Picture picture = DrawFrame();

    // Half extents 20, 40 and 30; the front is 30 nearer than the scene.
    EXPECT_TRUE(PixelAt(picture, OnScreen(150, 0, sceneZ + 30), 0, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(130, 0, sceneZ + 30), 2, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(130, 0, sceneZ + 30), -2, 0, green)); // its left side
    EXPECT_TRUE(PixelAt(picture, OnScreen(170, 0, sceneZ + 30), -2, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(170, 0, sceneZ + 30), 2, 0, black));
    EXPECT_TRUE(PixelAt(picture, OnScreen(150, 40, sceneZ + 30), 0, 1, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(150, 40, sceneZ + 30), 0, -1, black));
    EXPECT_TRUE(PixelAt(picture, OnScreen(150, -40, sceneZ + 30), 0, -1, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(150, -40, sceneZ + 30), 0, 1, black));
}

TEST_F(FramePicture, PushesTheBoxRightByBands8And9AndUpByBands10To15) {
    DrawUntilTheBoxIsAlone();

    Spectrum()[8] = 0.1F;
    Spectrum()[9] = 0.2F; // their sum, 0.3, by 500: 150 to the right
    for (std::size_t band = 10; band <= 15; ++band) {
        Spectrum()[band] = 0.25F; // a fifth of their sum, 0.3, by 500: 150 up
    }
    const Picture picture = DrawFrame();

    EXPECT_TRUE(PixelAt(picture, OnScreen(300, 150, sceneZ + 30), 0, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(300, 190, sceneZ + 30), 0, 1, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(300, 190, sceneZ + 30), 0, -1, black));
    EXPECT_TRUE(PixelAt(picture, OnScreen(320, 150, sceneZ + 30), -2, 0, red));
    EXPECT_TRUE(PixelAt(picture, OnScreen(320, 150, sceneZ + 30), 2, 0, black));
}

TEST_F(FramePicture, TurnsTheBoxAboutTheVertical) {
    DrawUntilTheBoxIsAlone();

    rotate = 89.7F; // a frame adds three times a tenth of a degree
    const Picture picture = DrawFrame();

    // Its left side is in front now, as wide as the box is deep.
    EXPECT_TRUE(PixelAt(picture, OnScreen(150, 0, sceneZ + 20), 0, 0, green));
    for (const double y : {-38.0, 0.0, 38.0}) {
        EXPECT_TRUE(PixelAt(picture, OnScreen(120, y, sceneZ + 20), 1, 0, green));
        EXPECT_TRUE(PixelAt(picture, OnScreen(120, y, sceneZ + 20), -1, 0, black));
        EXPECT_TRUE(PixelAt(picture, OnScreen(180, y, sceneZ + 20), -1, 0, green));
        EXPECT_TRUE(PixelAt(picture, OnScreen(180, y, sceneZ + 20), 1, 0, black));
    }
}

TEST_F(FramePicture, WrapsTheBoxInThePictureLastShown) {
    AddPicture("skovr", OneColour({128, 128, 128, 255}));
    AddPicture("credits", OneColour(white));
    DrawFrame();
    EnlargeBox();

    EXPECT_TRUE(PixelAt(DrawFrame(), OnScreen(150, 0, sceneZ + 30), 0, 0, {128, 0, 0}));
    SetPosition(30000);
    EXPECT_TRUE(PixelAt(DrawFrame(), OnScreen(150, 0, sceneZ + 30), 0, 0, {128, 0, 0}));
}

// The frame.

TEST_F(FramePicture, StartsFromAClearedScreen) {
    SetPosition(30000);
    Spectrum().fill(0.05F);
    DrawFrame();

    Spectrum().fill(0.0F);

    EXPECT_TRUE(PixelIs(DrawFrame(), 512, 767, black, 0));
}

TEST_F(FramePicture, RaisesNoErrorInAnyPartOfTheShow) {
    PlayUnevenSpectrum();
    for (const unsigned int positionMs : {0U, 15000U, 30000U}) {
        SetPosition(positionMs);
        DrawFrame();
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR}) << "at " << positionMs << " ms";
    }
}

TEST_F(FramePicture, LeavesNoMatrixOnTheStack) {
    DrawFrame();
    DrawFrame();

    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
}

TEST_F(FramePicture, IsTheSameWheneverTheShowIsTheSame) {
    AddPicture("skovr", FourQuarters());
    PlayUnevenSpectrum();

    const Picture first = DrawFrame();
    StartAgain();

    EXPECT_EQ(DrawFrame(), first);
}
