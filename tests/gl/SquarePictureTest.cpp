// The textured square as it is seen.
#include "OffscreenContext.h"
#include "Picture.h"
#include "PngFile.h"
#include "Scene1.h"

#include <GL/gl.h>
#include <GL/glpng.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

using gltest::Picture;
using namespace gltest::colours;

namespace {

constexpr int side = 64;

// Two units to each side of the origin are seen, 16 pixels a unit.
class SquarePicture : public testing::Test {
protected:
    SquarePicture() {
        glMatrixMode(GL_PROJECTION);
        glOrtho(-2, 2, -2, 2, -1, 1);
    }

    Picture Draw(double width, double height) const {
        glClear(GL_COLOR_BUFFER_BIT);
        DrawSquare(width, height);
        return gltest::ReadDrawn(side, side);
    }

    // Binds a PNG file with red and green in its upper row, blue and white in its lower.
    static void BindPicture() {
        const std::string path = testing::TempDir() + "SquarePicture." +
                                 testing::UnitTest::GetInstance()->current_test_info()->name() +
                                 ".png";
        gltest::WriteFile(path, gltest::Encode({.width = 2,
                                                .height = 2,
                                                .rows = {255, 0, 0, 0, 255, 0, //
                                                         0, 0, 255, 255, 255, 255}}));
        pngBind(path.c_str(), PNG_NOMIPMAPS, PNG_ALPHA, nullptr, GL_REPEAT, GL_NEAREST, GL_NEAREST);
        std::filesystem::remove(path);
    }

    OffscreenContext context{side, side};
};

} // namespace

TEST_F(SquarePicture, ReachesFromTheOriginToWidthAndHeight) {
    glColor3f(1, 0, 0);

    const Picture picture = Draw(1.5, 1);

    EXPECT_TRUE(PixelIs(picture, 31, 20, black));
    EXPECT_TRUE(PixelIs(picture, 32, 20, red));
    EXPECT_TRUE(PixelIs(picture, 55, 20, red));
    EXPECT_TRUE(PixelIs(picture, 56, 20, black));
    EXPECT_TRUE(PixelIs(picture, 40, 15, black));
    EXPECT_TRUE(PixelIs(picture, 40, 16, red));
    EXPECT_TRUE(PixelIs(picture, 40, 31, red));
    EXPECT_TRUE(PixelIs(picture, 40, 32, black));
}

TEST_F(SquarePicture, ShowsTheWholePictureOnceItsFirstRowAtTheTop) {
    BindPicture();
    glEnable(GL_TEXTURE_2D);

    const Picture picture = Draw(2, 2);

    EXPECT_TRUE(PixelIs(picture, 33, 1, red));
    EXPECT_TRUE(PixelIs(picture, 62, 1, green));
    EXPECT_TRUE(PixelIs(picture, 33, 30, blue));
    EXPECT_TRUE(PixelIs(picture, 62, 30, white));
    EXPECT_TRUE(PixelIs(picture, 47, 15, red)); // the picture's middle is between these
    EXPECT_TRUE(PixelIs(picture, 48, 15, green));
    EXPECT_TRUE(PixelIs(picture, 47, 16, blue));
    EXPECT_TRUE(PixelIs(picture, 48, 16, white));
}

TEST_F(SquarePicture, FacesTheViewer) {
    glEnable(GL_CULL_FACE);

    EXPECT_TRUE(PixelIs(Draw(2, 2), 48, 16, white));
}

TEST_F(SquarePicture, ChangesNeitherColourNorBinding) {
    BindPicture();
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    glColor3f(0.25F, 0.5F, 0.75F);

    Draw(1, 1);

    GLint boundAfter = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &boundAfter);
    std::array<float, 4> colour = {};
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_EQ(boundAfter, bound);
    EXPECT_EQ(colour, (std::array{0.25F, 0.5F, 0.75F, 1.0F}));
}

TEST_F(SquarePicture, IsNothingWithoutHeight) {
    EXPECT_EQ(Draw(2, 0), Draw(0, 0));
    EXPECT_TRUE(PixelIs(Draw(2, 0), 40, 31, black));
    EXPECT_TRUE(PixelIs(Draw(2, 0), 40, 32, black));
}
