// The second scene as it is seen.
#include "Display.h"
#include "GlutWindow.h"
#include "Loader.h"
#include "Scene2.h"

#include <cmath>

using gltest::At;
using gltest::Picture;
using namespace gltest::colours;

namespace {

// In pixels: 50 units, 700 away, 45 degrees of view over the window's height.
const double radius = 50.0 / 700.0 / std::tan(22.5 * 3.14159265358979 / 180) * 256;

class RingPicture : public gltest::GlutWindow {
protected:
    RingPicture() {
        rotate = 0;
        engine::ReSizeGLScene(gltest::windowSide, gltest::windowSide);
    }
    ~RingPicture() override { rotate = 0; }
};

} // namespace

TEST_F(RingPicture, IsARedRingOfSlivers) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE); // they are thinner than a pixel: their outlines

    Scene2();

    const Picture picture = Drawn();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION)); // the refused rotations
    for (int degrees = 1; degrees < 356; degrees += 6) { // in the middle of a sliver each
        const double angle = degrees * 3.14 / 180;
        EXPECT_TRUE(IsNear(picture, radius * std::cos(angle), radius * std::sin(angle), red))
            << degrees;
    }
    EXPECT_EQ(At(picture, 0, 0), black);
    EXPECT_EQ(At(picture, 0.8 * radius, 0), black);
    EXPECT_EQ(At(picture, 1.2 * radius, 0), black);
}

TEST_F(RingPicture, TumblesWithEveryCall) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    rotate = 89; // after the call it is seen from its edge

    Scene2();

    const Picture picture = Drawn();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
    EXPECT_EQ(rotate, 90.0F);
    EXPECT_FALSE(IsNear(picture, 0, radius, red, 4));
    EXPECT_FALSE(IsNear(picture, 0, -radius, red, 4));
}

TEST_F(RingPicture, DoesNotDependOnTheMatrixBefore) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    Scene2();
    const Picture before = Drawn();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    rotate = 0;
    glTranslatef(100, 200, -300);

    Scene2();

    EXPECT_TRUE(Drawn() == before);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
}
