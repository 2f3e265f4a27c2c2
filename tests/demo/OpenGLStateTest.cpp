// What is set once for the whole show.
#include "OpenGLState.h"

#include "main.h"

#include "DemoEngine.h"
#include "FmodEngine.h"
#include "LightEngine.h"

#include "Effects.h"
#include "ShowFixture.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::ElementsAre;

class OpenGLStateTest : public ShowFixture {
protected:
    OpenGLStateTest() { MakeDemo(); }
};

TEST_F(OpenGLStateTest, InitGLOnlyPrintsAndSetsTheVolumeField) {
    bool result = false;
    EXPECT_EQ(EffectsOf([&] { result = InitGL(); }), Lines({R"(print "Configuring FMOD\n")"}));
    EXPECT_TRUE(result);
    EXPECT_EQ(demo->fmod->volume, 175.0F);
}

TEST_F(OpenGLStateTest, InitGLSaysSoBeforeItSetsTheVolumeOfMusicThatPlays) {
    Load();
    EXPECT_EQ(EffectsOf([] { InitGL(); }),
              Lines({
                  R"(print "Configuring FMOD\n")",
                  "FMOD::Channel::setVolume(" + doubles::Text(175.0F / 255.0F) + ")",
              }));
}

TEST_F(OpenGLStateTest, SetGLSetsTheWholeStateInOrder) {
    const std::string effects = EffectsOf([] { SetGL(); });
    EXPECT_EQ(effects, Lines({
                           "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                           "glAlphaFunc(GL_GREATER, 0.1)",
                           "glClearColor(0, 0, 0, 0)",
                           "glEnable(GL_DEPTH_TEST)",
                           "glEnable(GL_TEXTURE_2D)",
                           "glClearDepth(9)",
                           "glDepthFunc(GL_LEQUAL)",
                           "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)",
                       }) + EffectsOf([] { demo->light->ActivateLight(); }));
}

TEST_F(OpenGLStateTest, SetGLClearsToTheFirstFourFloatsOfTheClearColour) {
    for (int index = 0; index < 5; ++index) {
        demo->clearColour[index] = 0.125F * static_cast<float>(index + 1);
    }
    EXPECT_THAT(EffectsOf([] { SetGL(); }),
                testing::HasSubstr("glClearColor(0.125, 0.25, 0.375, 0.5)\n"));
}

TEST_F(OpenGLStateTest, SetGLStoresTheLighterGreyWithFullAlphaInTheLight) {
    demo->light->ambient[3] = 0.0F;
    EffectsOf([] { SetGL(); });
    EXPECT_THAT(demo->light->ambient, ElementsAre(0.6F, 0.6F, 0.6F, 1.0F));
}

} // namespace
