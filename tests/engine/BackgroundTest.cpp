// The rectangle behind a scene.
#include "Background.h"

#include "Effects.h"
#include "Fixture.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

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

TEST_F(BackgroundTest, IsMirroredOrTurnedByNegativeExtentsAndMayBeInfinite) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const auto& [w, h] :
         {std::pair{-4.0F, 3.0F}, {4.0F, -3.0F}, {-4.0F, -3.0F}, {infinity, 3.0F}}) {
        const auto corner = [](float x, float y) {
            return "glVertex3f(" + doubles::Text(x) + ", " + doubles::Text(y) + ", 0)";
        };
        EXPECT_EQ(doubles::Only("glVertex3f(", Draw(w, h, 7)),
                  Lines({corner(-w, h), corner(w, h), corner(w, -h), corner(-w, -h)}));
    }
}

} // namespace
