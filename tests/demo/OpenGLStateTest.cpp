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
    EXPECT_EQ(EffectsOf([] { SetGL(); }),
              Lines({
                  "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                  "glAlphaFunc(GL_GREATER, 0.1)",
                  "glClearColor(0, 0, 0, 0)",
                  "glEnable(GL_DEPTH_TEST)",
                  "glEnable(GL_TEXTURE_2D)",
                  "glClearDepth(9)",
                  "glDepthFunc(GL_LEQUAL)",
                  "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)",
                  "glDisable(GL_LIGHT0)",
                  "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0.6, 0.6, 0.6, 1})",
                  "glLightfv(GL_LIGHT0, GL_DIFFUSE, {0.6, 0.6, 0.6, 1})",
                  "glLightfv(GL_LIGHT0, GL_SPECULAR, {1, 1, 1, 1})",
                  "glLightfv(GL_LIGHT0, GL_POSITION, {0, 50, 0, 1})",
                  "glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 60)",
                  "glEnable(GL_LIGHT0)",
                  "glEnable(GL_COLOR_MATERIAL)",
                  "glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE)",
                  "glMaterialfv(GL_FRONT, GL_SPECULAR, {1, 1, 1, 1})",
                  "glMateriali(GL_FRONT, GL_SHININESS, 128)",
              }));
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
