// The rectangle behind a scene.
#include "Background.h"

#include "Effects.h"
#include "Fixture.h"
#include "OpenGL.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

class BackgroundTest : public doubles::Fixture {
protected:
    static std::string Draw(float w, float h, unsigned long tex) {
        return EffectsOf([&] { engine::DrawBackground(w, h, tex); });
    }
};

TEST_F(BackgroundTest, IsOneQuadWithThePictureUpright) {
    EXPECT_EQ(Draw(4, 3, 7), Lines({
                                 "glBindTexture(GL_TEXTURE_2D, 7)",
                                 "glBegin(GL_QUADS)",
                                 "glNormal3f(0, 0, 1)",
                                 "glTexCoord2f(0, 0)",
                                 "glVertex3f(-4, 3, 0)",
                                 "glTexCoord2f(1, 0)",
                                 "glVertex3f(4, 3, 0)",
                                 "glTexCoord2f(1, 1)",
                                 "glVertex3f(4, -3, 0)",
                                 "glTexCoord2f(0, 1)",
                                 "glVertex3f(-4, -3, 0)",
                                 "glEnd()",
                             }));
}

TEST_F(BackgroundTest, IsDrawnWithTexture0Too) {
    const std::string effects = Draw(4, 3, 0);
    EXPECT_EQ(doubles::Only("glBind", effects), Lines({"glBindTexture(GL_TEXTURE_2D, 0)"}));
    EXPECT_EQ(doubles::Count("glVertex3f(", effects), 4);
}

TEST_F(BackgroundTest, LeavesTexturingAsItFoundIt) {
    Draw(4, 3, 7);
    EXPECT_TRUE(doubles::openGL.enabled.empty());
    doubles::openGL.enabled = {GL_TEXTURE_2D};
    Draw(4, 3, 7);
    EXPECT_TRUE(doubles::openGL.enabled.contains(GL_TEXTURE_2D));
}

TEST_F(BackgroundTest, NegativeWidthMirrorsIt) {
    EXPECT_EQ(doubles::Only("glVertex3f(", Draw(-4, 3, 7)), Lines({
                                                                "glVertex3f(4, 3, 0)",
                                                                "glVertex3f(-4, 3, 0)",
                                                                "glVertex3f(-4, -3, 0)",
                                                                "glVertex3f(4, -3, 0)",
                                                            }));
}

TEST_F(BackgroundTest, NegativeHeightMirrorsIt) {
    EXPECT_EQ(doubles::Only("glVertex3f(", Draw(4, -3, 7)), Lines({
                                                                "glVertex3f(-4, -3, 0)",
                                                                "glVertex3f(4, -3, 0)",
                                                                "glVertex3f(4, 3, 0)",
                                                                "glVertex3f(-4, 3, 0)",
                                                            }));
}

TEST_F(BackgroundTest, BothNegativeTurnIt) {
    EXPECT_EQ(doubles::Only("glVertex3f(", Draw(-4, -3, 7)), Lines({
                                                                 "glVertex3f(4, -3, 0)",
                                                                 "glVertex3f(-4, -3, 0)",
                                                                 "glVertex3f(-4, 3, 0)",
                                                                 "glVertex3f(4, 3, 0)",
                                                             }));
}

TEST_F(BackgroundTest, MayBeInfinite) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(doubles::Only("glVertex3f(", Draw(infinity, 3, 7)), Lines({
                                                                      "glVertex3f(-inf, 3, 0)",
                                                                      "glVertex3f(inf, 3, 0)",
                                                                      "glVertex3f(inf, -3, 0)",
                                                                      "glVertex3f(-inf, -3, 0)",
                                                                  }));
}

} // namespace
