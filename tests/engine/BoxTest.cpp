// The box: what it draws, what it leaves behind, how its pulse swings.
#include "Box.h"

#include "Effects.h"
#include "Fixture.h"
#include "OpenGL.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::ElementsAre;
using testing::StartsWith;

class BoxTest : public doubles::Fixture {
protected:
    /// `pulse` after each of @p count steps.
    static std::vector<float> Swing(engine::Box& box, float step, int count) {
        std::vector<float> pulses;
        for (int call = 0; call < count; ++call) {
            box.ChangeSize(step);
            pulses.push_back(box.pulse);
        }
        return pulses;
    }

    /// Gives each row a colour of its own: row 3 is (0.25, 3, 0.75).
    static void Paint(engine::Box& box) {
        for (int row = 0; row < 6; ++row) {
            box.colour[row][0] = 0.25F;
            box.colour[row][1] = static_cast<float>(row);
            box.colour[row][2] = 0.75F;
        }
    }
};

TEST_F(BoxTest, IsMadeAsAFallingBlackUntexturedCubeOfEdge2) {
    const engine::Box box;
    EXPECT_EQ(box.width, 1.0F);
    EXPECT_EQ(box.height, 1.0F);
    EXPECT_EQ(box.depth, 1.0F);
    EXPECT_EQ(box.pulse, 0.0F);
    EXPECT_FALSE(box.growing);
    EXPECT_EQ(box.texture, 0);
    EXPECT_THAT(box.colour, testing::Each(testing::Each(0.0F)));
}

TEST_F(BoxTest, HasItsFieldsInOrder) {
    const engine::Box box;
    EXPECT_TRUE(doubles::AreInOrder({&box.width, &box.height, &box.depth, &box.pulse, &box.colour,
                                     &box.growing, &box.texture}));
}

TEST_F(BoxTest, CleanColourClearsTheRedOfThreeRowsAndNothingElse) {
    engine::Box box;
    for (auto& row : box.colour) {
        row[0] = row[1] = row[2] = 0.5F;
    }

    box.CleanColour();

    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ(box.colour[row][0], row < 3 ? 0.0F : 0.5F) << row;
        EXPECT_EQ(box.colour[row][1], 0.5F) << row;
        EXPECT_EQ(box.colour[row][2], 0.5F) << row;
    }
}

TEST_F(BoxTest, DrawsSixFacesWithTheirColoursAndTheWholeTexture) {
    engine::Box box;
    Paint(box);
    EXPECT_EQ(EffectsOf([&] { box.DrawSizedBox(2, 3, 5, 0); }), Lines({
                                                                    "glBegin(GL_QUADS)",
                                                                    // back
                                                                    "glColor3f(0.25, 0, 0.75)",
                                                                    "glTexCoord2f(0, 1)",
                                                                    "glVertex3f(-2, 3, -5)",
                                                                    "glTexCoord2f(1, 1)",
                                                                    "glVertex3f(2, 3, -5)",
                                                                    "glTexCoord2f(1, 0)",
                                                                    "glVertex3f(2, -3, -5)",
                                                                    "glTexCoord2f(0, 0)",
                                                                    "glVertex3f(-2, -3, -5)",
                                                                    // right
                                                                    "glColor3f(0.25, 4, 0.75)",
                                                                    "glTexCoord2f(1, 1)",
                                                                    "glVertex3f(2, 3, 5)",
                                                                    "glTexCoord2f(1, 0)",
                                                                    "glVertex3f(2, -3, 5)",
                                                                    "glTexCoord2f(0, 0)",
                                                                    "glVertex3f(2, -3, -5)",
                                                                    "glTexCoord2f(0, 1)",
                                                                    "glVertex3f(2, 3, -5)",
                                                                    // left
                                                                    "glColor3f(0.25, 2, 0.75)",
                                                                    "glTexCoord2f(0, 1)",
                                                                    "glVertex3f(-2, 3, 5)",
                                                                    "glTexCoord2f(0, 0)",
                                                                    "glVertex3f(-2, -3, 5)",
                                                                    "glTexCoord2f(1, 0)",
                                                                    "glVertex3f(-2, -3, -5)",
                                                                    "glTexCoord2f(1, 1)",
                                                                    "glVertex3f(-2, 3, -5)",
                                                                    // top
                                                                    "glColor3f(0.25, 3, 0.75)",
                                                                    "glTexCoord2f(0, 1)",
                                                                    "glVertex3f(-2, 3, 5)",
                                                                    "glTexCoord2f(1, 1)",
                                                                    "glVertex3f(2, 3, 5)",
                                                                    "glTexCoord2f(1, 0)",
                                                                    "glVertex3f(2, 3, -5)",
                                                                    "glTexCoord2f(0, 0)",
                                                                    "glVertex3f(-2, 3, -5)",
                                                                    // bottom
                                                                    "glColor3f(0.25, 5, 0.75)",
                                                                    "glTexCoord2f(0, 0)",
                                                                    "glVertex3f(-2, -3, 5)",
                                                                    "glTexCoord2f(1, 0)",
                                                                    "glVertex3f(2, -3, 5)",
                                                                    "glTexCoord2f(1, 1)",
                                                                    "glVertex3f(2, -3, -5)",
                                                                    "glTexCoord2f(0, 1)",
                                                                    "glVertex3f(-2, -3, -5)",
                                                                    // front, in the bottom's colour
                                                                    "glTexCoord2f(0, 1)",
                                                                    "glVertex3f(-2, 3, 5)",
                                                                    "glTexCoord2f(1, 1)",
                                                                    "glVertex3f(2, 3, 5)",
                                                                    "glTexCoord2f(1, 0)",
                                                                    "glVertex3f(2, -3, 5)",
                                                                    "glTexCoord2f(0, 0)",
                                                                    "glVertex3f(-2, -3, 5)",
                                                                    // left behind
                                                                    "glColor3f(0.25, 1, 0.75)",
                                                                    "glEnd()",
                                                                }));
}

TEST_F(BoxTest, TexturedSwitchesTexturingOnForItselfOnly) {
    engine::Box box;
    const std::string effects = EffectsOf([&] { box.DrawSizedBox(1, 1, 1, 7); });
    EXPECT_THAT(effects, StartsWith(Lines({
                             "glIsEnabled(GL_TEXTURE_2D)",
                             "glEnable(GL_TEXTURE_2D)",
                             "glBindTexture(GL_TEXTURE_2D, 7)",
                             "glBindTexture(GL_TEXTURE_2D, 7)",
                             "glBegin(GL_QUADS)",
                         })));
    EXPECT_THAT(effects, testing::EndsWith(Lines({"glEnd()", "glDisable(GL_TEXTURE_2D)"})));
}

TEST_F(BoxTest, TexturedLeavesTexturingOnWhereItWasOn) {
    doubles::openGL.enabled = {GL_TEXTURE_2D};
    engine::Box box;
    const std::string effects = EffectsOf([&] { box.DrawSizedBox(1, 1, 1, 7); });
    EXPECT_THAT(effects, StartsWith(Lines({
                             "glIsEnabled(GL_TEXTURE_2D)",
                             "glBindTexture(GL_TEXTURE_2D, 7)",
                             "glBindTexture(GL_TEXTURE_2D, 7)",
                             "glBegin(GL_QUADS)",
                         })));
    EXPECT_THAT(effects, testing::EndsWith("\nglEnd()\n"));
}

TEST_F(BoxTest, DrawBoxUsesItsOwnExtentsAndTexture) {
    engine::Box box;
    box.width = 2;
    box.height = 3;
    box.depth = 5;
    box.texture = 7;
    EXPECT_EQ(EffectsOf([&] { box.DrawBox(); }),
              EffectsOf([] { engine::Box().DrawSizedBox(2, 3, 5, 7); }));
}

TEST_F(BoxTest, SwingsBetweenItsLimits) {
    engine::Box box;
    EXPECT_THAT(Swing(box, 0.25F, 12), ElementsAre(0.0F, 0.25F, 0.5F, 0.75F, 1.0F, 0.75F, 0.5F,
                                                   0.25F, 0.0F, 0.0F, 0.25F, 0.5F));
}

TEST_F(BoxTest, TurnsAtExactlyItsLimitsDownWithAStepAndUpWithout) {
    const float belowUpper = std::nextafter(0.8F, 0.0F);
    const float aboveLower = std::nextafter(0.1F, 1.0F);
    const struct {
        bool growing;
        float pulse;
        bool growingAfter;
        float pulseAfter;
    } cases[] = {
        {true, belowUpper, true, belowUpper + 0.25F},
        {true, 0.8F, false, 0.8F - 0.25F},
        {false, aboveLower, false, aboveLower - 0.25F},
        {false, 0.1F, true, 0.1F},
    };
    for (const auto& [growing, pulse, growingAfter, pulseAfter] : cases) {
        engine::Box box;
        box.growing = growing;
        box.pulse = pulse;
        box.ChangeSize(0.25F);
        EXPECT_EQ(box.growing, growingAfter) << pulse;
        EXPECT_EQ(box.pulse, pulseAfter) << pulse;
    }
}

TEST_F(BoxTest, LargeStepsOvershootInACycleOfThree) {
    engine::Box box;
    EXPECT_THAT(Swing(box, 100.0F, 8),
                ElementsAre(0.0F, 100.0F, 0.0F, 0.0F, 100.0F, 0.0F, 0.0F, 100.0F));
}

TEST_F(BoxTest, RisingPulseThatIsNoNumberStaysAsItIs) {
    engine::Box box;
    box.growing = true;
    box.pulse = std::numeric_limits<float>::quiet_NaN();
    box.ChangeSize(0.25F);
    EXPECT_TRUE(box.growing);
    EXPECT_NE(box.pulse, box.pulse);
}

TEST_F(BoxTest, ChangeColorTakesThreeOfEverySixFloats) {
    std::vector<float> source(33); // not one more is read
    std::iota(source.begin(), source.end(), 0.0F);
    engine::Box box;

    box.ChangeColor(source.data());

    EXPECT_THAT(box.colour, ElementsAre(ElementsAre(0, 1, 2), ElementsAre(6, 7, 8),
                                        ElementsAre(12, 13, 14), ElementsAre(18, 19, 20),
                                        ElementsAre(24, 25, 26), ElementsAre(30, 31, 32)));
}

TEST_F(BoxTest, ChangeColorChangesNothingBehindItsColours) {
    std::vector<float> source(36, std::nextafter(1.0F, 2.0F)); // its first byte is that of true
    engine::Box box;
    box.texture = 7;

    box.ChangeColor(source.data());

    EXPECT_FALSE(box.growing);
    EXPECT_EQ(box.texture, 7);
}

} // namespace
