// The visible show.
#include "Scene1.h"

#include "Loader.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "FmodEngine.h"
#include "TextureManager.h"

#include "Effects.h"
#include "ExpectedScene.h"
#include "Fmod.h"
#include "ShowFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <deque>
#include <optional>
#include <string>

namespace {

using doubles::EffectsOf;
using testing::HasSubstr;

constexpr unsigned int titlePicture = 41;
constexpr unsigned int creditsPicture = 42;
constexpr float firstTurns[] = {0.1F, 0.2F, 0.3F};

class Scene1Test : public ShowFixture {
protected:
    Scene1Test() {
        MakeDemo();
        Load();
        demo->textures->textures = {
            {"texture", 40}, {"skovr", titlePicture}, {"credits", creditsPicture}};
    }

    /// A scene where the position is asked for and answered by @p positions.
    static std::string SceneAt(const std::deque<unsigned int>& positions) {
        doubles::fmod.positions = positions;
        return EffectsOf([] { Scene1(); });
    }

    static void SetSpectrum(const doubles::Spectrum& spectrum) {
        std::copy(spectrum.begin(), spectrum.end(), demo->fmod->spectrum);
    }

    /// The scene as the first one, but for what is given.
    static ExpectedScene First(std::optional<unsigned int> picture,
                               const doubles::Spectrum& spectrum = {}) {
        return {picture, spectrum, {firstTurns[0], firstTurns[1], firstTurns[2]}, 0.005F};
    }
};

TEST_F(Scene1Test, DrawsPictureBarsAndBoxInOrder) {
    SetSpectrum(QuadraticSpectrum());
    EXPECT_EQ(SceneAt({0}), Lines(First(titlePicture, QuadraticSpectrum())));
}

TEST_F(Scene1Test, ShowsTheTitleUntil14999AndTheCreditsFrom15000) {
    EXPECT_THAT(SceneAt({14999}), HasSubstr("glBindTexture(GL_TEXTURE_2D, 41)\n"));
    EXPECT_THAT(SceneAt({15000}), HasSubstr("glBindTexture(GL_TEXTURE_2D, 42)\n"));
}

TEST_F(Scene1Test, DrawsThePictureUntil29999) {
    EXPECT_EQ(SceneAt({29999}), Lines(First(creditsPicture)));
}

TEST_F(Scene1Test, DrawsBarsAndBoxOnlyFrom30000) {
    EXPECT_EQ(SceneAt({30000}), Lines(First(std::nullopt)));
}

TEST_F(Scene1Test, AsksForThePositionAgainToChooseThePicture) {
    EXPECT_THAT(SceneAt({14999, 15000}), HasSubstr("glBindTexture(GL_TEXTURE_2D, 42)\n"));
    EXPECT_THAT(SceneAt({29999, 30000}), HasSubstr("glBindTexture(GL_TEXTURE_2D, 42)\n"));
    EXPECT_THAT(SceneAt({15000, 14999}), HasSubstr("glBindTexture(GL_TEXTURE_2D, 41)\n"));
}

TEST_F(Scene1Test, ComparesPositionsSigned) {
    EXPECT_EQ(SceneAt({0xFFFFFFFFU}), Lines(First(titlePicture)));
}

TEST_F(Scene1Test, MissingPictureIsDrawnWithTexture0) {
    demo->textures->textures.erase("skovr");
    EXPECT_EQ(SceneAt({0}), Lines(First(0)));
}

TEST_F(Scene1Test, BarsGoFromNearBlackOverGreenAndYellowToWhite) {
    const std::string effects = SceneAt({30000});
    const std::string colours = doubles::Only("glColor3f", effects);
    EXPECT_THAT(colours, testing::StartsWith("glColor3f(1, 0, 0)\n" // before the bars
                                             "glColor3f(0.004, 0.008, 0.002)\n")); // bar 0
    EXPECT_THAT(colours, HasSubstr("\nglColor3f(0.5, 1, 0.25)\n"));                // bar 62
    EXPECT_THAT(colours, HasSubstr("\nglColor3f(0.996, 1.992, 0.498)\n"));         // bar 124
    EXPECT_THAT(colours, HasSubstr("\nglColor3f(2.036, 4.072, 1.018)\n"            // bar 254
                                   "glColor3f(1, 1, 1)\n"));                       // after the bars
    EXPECT_EQ(doubles::Count("glTranslatef(4.7, 0, 0)", effects), 255);
}

TEST_F(Scene1Test, BarShowsTheSumOfItsTwoBandsTimes4000) {
    doubles::Spectrum spectrum{};
    spectrum[0] = 8.0F; // of no bar, like band 511
    spectrum[1] = 0.25F;
    spectrum[2] = 0.5F;
    spectrum[509] = 0.125F;
    spectrum[510] = 0.0625F;
    spectrum[511] = 8.0F;
    SetSpectrum(spectrum);
    const std::string corners = doubles::Only("glVertex3f(4.7, ", SceneAt({30000}));
    EXPECT_THAT(corners, testing::StartsWith("glVertex3f(4.7, 3000, 0)\n"
                                             "glVertex3f(4.7, 0, 0)\n"
                                             "glVertex3f(4.7, 0, 0)\n"));
    EXPECT_THAT(corners, testing::EndsWith("glVertex3f(4.7, 0, 0)\n"
                                           "glVertex3f(4.7, 750, 0)\n"
                                           "glVertex3f(4.7, 0, 0)\n"));
    EXPECT_THAT(corners, testing::Not(HasSubstr("32000")));
}

TEST_F(Scene1Test, RotationAndScrollAdvanceInEveryFrameAndAreKeptInFloat) {
    float expectedRotate = 0;
    float expectedAngle = 0;
    for (int frame = 0; frame < 400; ++frame) {
        doubles::fmod.positions = {frame < 200 ? 0U : 30000U};
        Scene1();
        for (int turn = 0; turn < 3; ++turn) {
            expectedRotate = static_cast<float>(static_cast<double>(expectedRotate) + 0.1);
        }
        expectedAngle = static_cast<float>(static_cast<double>(expectedAngle) + 0.005);
        ASSERT_EQ(rotate, expectedRotate) << frame;
        ASSERT_EQ(globalAngle, expectedAngle) << frame;
    }
    EXPECT_NEAR(rotate, 120.0F, 0.01F);
    EXPECT_NEAR(globalAngle, 2.0F, 0.001F);
}

TEST_F(Scene1Test, RotationAndScrollAreAddedInDouble) {
    // Places where adding in single precision would come out one step higher, or lower.
    rotate = 0x1.9999a8p-5F;
    globalAngle = 0x1.0624e4p-10F;
    const std::string effects = SceneAt({0});
    EXPECT_THAT(effects, HasSubstr("glRotatef(0.15000002, 1, 0, 0.1)\n"));
    EXPECT_EQ(globalAngle, 0.00600000052F);
}

TEST_F(Scene1Test, StepsThePulseOfTheBoxBy100) {
    SceneAt({0});
    EXPECT_EQ(kasse->pulse, 0.0F);
    SceneAt({0});
    EXPECT_EQ(kasse->pulse, 100.0F);
    SceneAt({0});
    EXPECT_EQ(kasse->pulse, 0.0F);
    EXPECT_FALSE(kasse->growing);
}

TEST_F(Scene1Test, DrawsTheBoxThatTheLoaderMade) {
    kasse->width = 3.0F;
    kasse->texture = 77;
    const std::string effects = SceneAt({0});
    EXPECT_THAT(effects, HasSubstr("glScalef(0.2, 0.4, 0.3)\n"
                                   "glIsEnabled(GL_TEXTURE_2D)\n"
                                   "glBindTexture(GL_TEXTURE_2D, 77)\n"));
    EXPECT_THAT(effects, HasSubstr("glVertex3f(-3, 1, -1)\n"));
}

TEST_F(Scene1Test, DrawSquareNarrowsToSinglePrecision) {
    EXPECT_THAT(EffectsOf([] { DrawSquare(16777217.0, 1.0 / 3.0); }),
                HasSubstr("glVertex3f(16777216, 0.33333334, 0)\n"));
}

} // namespace
