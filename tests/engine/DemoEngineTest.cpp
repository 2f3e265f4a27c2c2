// The engine object: what it is made of and its step of a frame.
#include "DemoEngine.h"

#include "FmodEngine.h"
#include "LightEngine.h"
#include "TextureManager.h"
#include "TimeEngine.h"

#include "DemoParts.h"
#include "Effects.h"
#include "Fixture.h"
#include "Fmod.h"

#include <memory>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

class DemoEngineTest : public doubles::Fixture {
protected:
    DemoEngineTest() {
        made = EffectsOf([this] { demo = std::make_unique<engine::DemoEngine>("\"Title\""); });
        EffectsOf([this] { music = std::make_unique<engine::FmodEngine>("synchtune"); });
    }

    ~DemoEngineTest() override { doubles::DeleteParts(*demo); }

    std::string made; // what the construction of `demo` called and printed
    std::unique_ptr<engine::DemoEngine> demo;
    std::unique_ptr<engine::FmodEngine> music;
};

TEST_F(DemoEngineTest, StartsWithItsDefaults) {
    EXPECT_EQ(demo->title, "\"Title\"");
    EXPECT_EQ(demo->viewExtentX, 500.0F);
    EXPECT_EQ(demo->viewExtentY, 375.0F);
    EXPECT_EQ(demo->cameraX, 0.0F);
    EXPECT_EQ(demo->cameraY, 0.0F);
    EXPECT_EQ(demo->cameraZ, -1100.0F);
    EXPECT_EQ(demo->fmod, nullptr);
    EXPECT_EQ(demo->time, nullptr);
}

TEST_F(DemoEngineTest, MakesItsPartsAndAsksForNothingButTheirBundle) {
    EXPECT_NE(demo->placeholderA, nullptr);
    EXPECT_NE(demo->placeholderB, nullptr);
    EXPECT_NE(demo->placeholderA, demo->placeholderB);
    ASSERT_NE(demo->textures, nullptr);
    EXPECT_TRUE(demo->textures->textures.empty());
    ASSERT_NE(demo->light, nullptr);
    EXPECT_EQ(demo->light->ambient[0], 0.5F);
    EXPECT_EQ(made, Lines({"CFBundleGetMainBundle()", "CFBundleGetMainBundle()"}));
}

TEST_F(DemoEngineTest, ClearColourIsABlockOf304Zeros) {
    for (int index = 0; index < 304; ++index) {
        EXPECT_EQ(demo->clearColour[index], 0.0F) << index;
    }
}

TEST_F(DemoEngineTest, HasItsFieldsInOrder) {
    EXPECT_TRUE(doubles::AreInOrder({&demo->viewExtentX, &demo->viewExtentY, &demo->cameraX,
                                     &demo->cameraY, &demo->cameraZ, &demo->placeholderA,
                                     &demo->placeholderB, &demo->textures, &demo->fmod,
                                     &demo->light, &demo->clearColour, &demo->time, &demo->title}));
}

TEST_F(DemoEngineTest, SetFmodTakesTheMusicAndMakesAClockOnIt) {
    EXPECT_EQ(EffectsOf([this] { demo->SetFmod(music.get()); }), "");
    EXPECT_EQ(demo->fmod, music.get());
    ASSERT_NE(demo->time, nullptr);
    EXPECT_EQ(demo->time->fmod, music.get());
    EXPECT_EQ(demo->time->curTime, 0);
}

TEST_F(DemoEngineTest, SecondSetFmodMakesASecondClock) {
    demo->SetFmod(music.get());
    const std::unique_ptr<engine::TimeEngine> first(demo->time);
    demo->SetFmod(music.get());
    EXPECT_NE(demo->time, first.get());
}

TEST_F(DemoEngineTest, RefreshMovesByTheCameraThenReadsSpectrumAndPosition) {
    demo->SetFmod(music.get());
    demo->cameraX = 1.5F;
    demo->cameraY = -2.25F;
    demo->cameraZ = 3.0F;
    EffectsOf([this] { music->Play(); });
    EXPECT_EQ(EffectsOf([this] { demo->Refresh(); }),
              Lines({
                  "glTranslatef(1.5, -2.25, 3)",
                  "FMOD::System::getSpectrum(512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE)",
                  "FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)",
              }));
}

TEST_F(DemoEngineTest, RefreshTicksTheClock) {
    demo->SetFmod(music.get());
    doubles::fmod.positions = {1000, 1040};
    EffectsOf([this] {
        music->Play();
        demo->Refresh();
        demo->Refresh();
    });
    EXPECT_EQ(demo->time->curTime, 1040);
    EXPECT_EQ(demo->time->prevTime, 1000);
    EXPECT_EQ(demo->time->deltaTime, 40);
}

TEST_F(DemoEngineTest, EnableSEMAsksForASphereMapInTwoWaysThenSwitchesItOn) {
    EXPECT_EQ(EffectsOf([this] { demo->EnableSEM(); }),
              Lines({
                  "glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP)",
                  "glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP)",
                  "glTexGeni(GL_S, GL_SPHERE_MAP, 0)", // OpenGL refuses this
                  "glTexGeni(GL_T, GL_SPHERE_MAP, 0)", // and this
                  "glEnable(GL_TEXTURE_GEN_S)",
                  "glEnable(GL_TEXTURE_GEN_T)",
              }));
}

TEST_F(DemoEngineTest, DisableSEMSwitchesTheCoordinatesOff) {
    EXPECT_EQ(EffectsOf([this] { demo->DisableSEM(); }), Lines({
                                                             "glDisable(GL_TEXTURE_GEN_S)",
                                                             "glDisable(GL_TEXTURE_GEN_T)",
                                                         }));
}

} // namespace
