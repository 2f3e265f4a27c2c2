// Opening the display, and the projection.
#include "Display.h"

#include "Effects.h"
#include "Fixture.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

class DisplayTest : public doubles::Fixture {
protected:
    static std::string Perspective(int width, int height) {
        return doubles::Only("gluPerspective",
                             EffectsOf([&] { engine::ReSizeGLScene(width, height); }));
    }
};

TEST_F(DisplayTest, WindowHasTheSizePositionAndTitleAskedFor) {
    EXPECT_EQ(EffectsOf([] { engine::BootGLUT(18, 1024, 768, 200, 201, false, "\"Title\""); }),
              Lines({
                  "glutInitDisplayMode(18)",
                  "glutInitWindowSize(1024, 768)",
                  "glutInitWindowPosition(200, 201)",
                  R"(glutCreateWindow("\"Title\""))",
              }));
}

TEST_F(DisplayTest, FullScreenMakesNoWindowAndHidesTheCursor) {
    EXPECT_EQ(EffectsOf([] { engine::BootGLUT(18, 1024, 768, 200, 200, true, "Title"); }),
              Lines({
                  "glutInitDisplayMode(18)",
                  "glutFullScreen()",
                  "glutEnterGameMode()",
                  "HideCursor()",
              }));
}

TEST_F(DisplayTest, ReshapeSetsProjectionAndViewportAndEndsInTheModelView) {
    EXPECT_EQ(EffectsOf([] { engine::ReSizeGLScene(1024, 768); }),
              Lines({
                  "glMatrixMode(GL_PROJECTION)",
                  "glLoadIdentity()",
                  "glViewport(0, 0, 1024, 768)",
                  "gluPerspective(45, 1.3333333730697632, 1, 2500)",
                  "glMatrixMode(GL_MODELVIEW)",
                  "glLoadIdentity()",
                  "gluLookAt(0, 0, 5, 0, 0, -0, 0, 1, 0)",
              }));
}

TEST_F(DisplayTest, AspectIsDividedInDoubleAndRoundedToSinglePrecision) {
    const double aspect = 5592407; // 5592406.5 with the width in single precision
    EXPECT_EQ(Perspective(16777221, 3),
              Lines({"gluPerspective(45, " + doubles::Text(aspect) + ", 1, 2500)"}));
    EXPECT_EQ(Perspective(1, 3), Lines({"gluPerspective(45, 0.3333333432674408, 1, 2500)"}));
}

TEST_F(DisplayTest, HeightOfZeroCountsAsOne) {
    const std::string effects = EffectsOf([] { engine::ReSizeGLScene(640, 0); });
    EXPECT_THAT(effects, testing::HasSubstr("glViewport(0, 0, 640, 1)\n"));
    EXPECT_THAT(effects, testing::HasSubstr("gluPerspective(45, 640, 1, 2500)\n"));
}

} // namespace
