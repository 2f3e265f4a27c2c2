// The box as it is seen from each of its sides.
#include "Box.h"
#include "OffscreenContext.h"
#include "Picture.h"
#include "Texels.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <array>

using gltest::Picture;
using gltest::Rgba;
using namespace gltest::colours;

namespace {

constexpr int size = 64;

// Two units to each side of the origin are seen, 16 pixels a unit.
class BoxPicture : public testing::Test {
protected:
    BoxPicture() {
        glEnable(GL_DEPTH_TEST);
        glMatrixMode(GL_PROJECTION);
        glOrtho(-2, 2, -2, 2, -10, 10);
        glMatrixMode(GL_MODELVIEW);
    }

    Picture Draw(engine::Box& box) const {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        box.DrawBox();
        return gltest::ReadDrawn(size, size);
    }

    // The box turned by @p degrees about an axis before it is drawn.
    Picture Draw(engine::Box& box, float degrees, float x, float y) const {
        glLoadIdentity();
        glRotatef(degrees, x, y, 0);
        return Draw(box);
    }

    // Red and green in the first row, blue and white in the second.
    static GLuint MakeTexture() {
        const GLuint name = gltest::BindNewTexture({red, green, blue, white});
        glBindTexture(GL_TEXTURE_2D, 0);
        return name;
    }

    OffscreenContext context{size, size};
};

// Row k of the colours is k fifths red, and the rest green.
engine::Box ColouredBox() {
    engine::Box box;
    for (int row = 0; row < 6; ++row) {
        const float share = static_cast<float>(row) / 5.0F;
        box.colour[row][0] = share;
        box.colour[row][1] = 1.0F - share;
        box.colour[row][2] = 0.0F;
    }
    return box;
}

Rgba ColourOfRow(int row) {
    return {51 * row, 255 - 51 * row, 0};
}

engine::Box WhiteBox(GLuint texture) {
    engine::Box box;
    for (auto& row : box.colour) {
        row[0] = row[1] = row[2] = 1.0F;
    }
    box.texture = static_cast<int>(texture);
    return box;
}

// A face fills the middle 32 by 32 pixels; these are its quarters.
void ExpectQuarters(const Picture& picture, const Rgba& upperLeft, const Rgba& upperRight,
                    const Rgba& lowerLeft, const Rgba& lowerRight) {
    EXPECT_TRUE(PixelIs(picture, 20, 20, upperLeft));
    EXPECT_TRUE(PixelIs(picture, 43, 20, upperRight));
    EXPECT_TRUE(PixelIs(picture, 20, 43, lowerLeft));
    EXPECT_TRUE(PixelIs(picture, 43, 43, lowerRight));
}

} // namespace

TEST_F(BoxPicture, ReachesAsFarAsItsHalfExtents) {
    engine::Box box = ColouredBox();
    box.width = 1.5F;
    box.height = 0.5F;

    const Picture picture = Draw(box);

    EXPECT_TRUE(PixelIs(picture, 7, 32, black));
    EXPECT_TRUE(PixelIs(picture, 8, 32, ColourOfRow(5)));
    EXPECT_TRUE(PixelIs(picture, 55, 32, ColourOfRow(5)));
    EXPECT_TRUE(PixelIs(picture, 56, 32, black));
    EXPECT_TRUE(PixelIs(picture, 32, 23, black));
    EXPECT_TRUE(PixelIs(picture, 32, 24, ColourOfRow(5)));
    EXPECT_TRUE(PixelIs(picture, 32, 39, ColourOfRow(5)));
    EXPECT_TRUE(PixelIs(picture, 32, 40, black));
}

TEST_F(BoxPicture, ReachesAsDeepAsItsHalfDepth) {
    engine::Box box = ColouredBox();
    box.depth = 0.5F;

    const Picture picture = Draw(box, 90, 0, 1); // its depth lies across

    EXPECT_TRUE(PixelIs(picture, 23, 32, black));
    EXPECT_TRUE(PixelIs(picture, 24, 32, ColourOfRow(2)));
    EXPECT_TRUE(PixelIs(picture, 39, 32, ColourOfRow(2)));
    EXPECT_TRUE(PixelIs(picture, 40, 32, black));
}

TEST_F(BoxPicture, HasOnEachFaceARowOfItsColoursAndTheTextureInItsWay) {
    const struct {
        const char* name;
        float degrees, x, y; // turned so, it is seen
        int row;
        Rgba quarters[4]; // of the texture
    } faces[] = {
        {"front", 0, 0, 1, 5, {blue, white, red, green}}, // upside down
        {"back", 180, 0, 1, 0, {white, blue, green, red}},
        {"right", -90, 0, 1, 4, {white, blue, green, red}},
        {"left", 90, 0, 1, 2, {white, blue, green, red}},
        {"top", 90, 1, 0, 3, {red, green, blue, white}}, // upright
        {"bottom", -90, 1, 0, 5, {red, green, blue, white}},
    };
    engine::Box coloured = ColouredBox();
    engine::Box textured = WhiteBox(MakeTexture());
    for (const auto& [name, degrees, x, y, row, quarters] : faces) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(PixelIs(Draw(coloured, degrees, x, y), 32, 32, ColourOfRow(row)));
        ExpectQuarters(Draw(textured, degrees, x, y), quarters[0], quarters[1], quarters[2],
                       quarters[3]);
    }
}

TEST_F(BoxPicture, LeavesRowOneCurrent) {
    engine::Box box = ColouredBox();

    Draw(box);

    std::array<float, 4> colour = {};
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_FLOAT_EQ(colour[0], 0.2F);
    EXPECT_FLOAT_EQ(colour[1], 0.8F);
    EXPECT_FLOAT_EQ(colour[2], 0.0F);
}

TEST_F(BoxPicture, IsBlackAsMade) {
    glClearColor(1, 1, 1, 1);
    engine::Box box;

    const Picture picture = Draw(box);

    EXPECT_TRUE(PixelIs(picture, 32, 32, black));
    EXPECT_TRUE(PixelIs(picture, 5, 5, white));
}

TEST_F(BoxPicture, TintsTheTextureWithItsColours) {
    engine::Box box = ColouredBox();
    box.texture = static_cast<int>(MakeTexture());

    const Picture picture = Draw(box, 180, 0, 1); // row 0: green

    ExpectQuarters(picture, green, black, green, black);
}

TEST_F(BoxPicture, SwitchesTexturingOffAgainOnlyIfItSwitchedItOn) {
    engine::Box box = WhiteBox(MakeTexture());

    glDisable(GL_TEXTURE_2D);
    Draw(box);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));

    glEnable(GL_TEXTURE_2D);
    Draw(box);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(BoxPicture, ShowsTheBoundTextureWhenItHasNoneAndTexturingIsOn) {
    engine::Box box = WhiteBox(0);
    const GLuint texture = MakeTexture();
    glBindTexture(GL_TEXTURE_2D, texture);
    glEnable(GL_TEXTURE_2D);

    ExpectQuarters(Draw(box), blue, white, red, green);
}
