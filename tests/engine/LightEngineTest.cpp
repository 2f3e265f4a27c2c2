// The light and the material.
#include "LightEngine.h"

#include "Effects.h"
#include "Fixture.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::ElementsAre;

class LightEngineTest : public doubles::Fixture {};

TEST_F(LightEngineTest, StartsWithItsDefaults) {
    const engine::LightEngine light;
    EXPECT_THAT(light.position, ElementsAre(0.0F, 50.0F, 0.0F, 1.0F));
    EXPECT_THAT(light.specular, ElementsAre(1.0F, 1.0F, 1.0F, 1.0F));
    EXPECT_THAT(light.materialSpecular, ElementsAre(1.0F, 1.0F, 1.0F, 1.0F));
    EXPECT_THAT(light.ambient, ElementsAre(0.5F, 0.5F, 0.5F, 1.0F));
    EXPECT_THAT(light.spotDirection, ElementsAre(0.0F, 0.0F, -1.0F));
}

TEST_F(LightEngineTest, TakesTheMainBundleAndCallsNoOpenGL) {
    const engine::LightEngine light;
    EXPECT_EQ(EffectsOf([] { engine::LightEngine(); }), Lines({"CFBundleGetMainBundle()"}));
    EXPECT_EQ(light.bundle, CFBundleGetMainBundle());
}

TEST_F(LightEngineTest, HasItsFieldsInOrder) {
    const engine::LightEngine light;
    EXPECT_TRUE(
        doubles::AreInOrder({&light.bundle, &light.position, &light.specular,
                             &light.materialSpecular, &light.ambient, &light.spotDirection}));
}

TEST_F(LightEngineTest, ActivateLightSetsEverythingInOrder) {
    engine::LightEngine light;
    EXPECT_EQ(EffectsOf([&] { light.ActivateLight(); }),
              Lines({
                  "glDisable(GL_LIGHT0)",
                  "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0.5, 0.5, 0.5, 1})",
                  "glLightfv(GL_LIGHT0, GL_DIFFUSE, {0.5, 0.5, 0.5, 1})",
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

TEST_F(LightEngineTest, EachSettingComesFromAFieldOfItsOwn) {
    engine::LightEngine light;
    light.position[0] = 10;
    light.specular[0] = 20;
    light.materialSpecular[0] = 30;
    light.ambient[0] = 40;
    const std::string effects = EffectsOf([&] { light.ActivateLight(); });
    EXPECT_EQ(doubles::Only("glLightModelfv", effects),
              Lines({"glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {40, 0.5, 0.5, 1})"}));
    EXPECT_EQ(doubles::Only("glLightfv", effects),
              Lines({
                  "glLightfv(GL_LIGHT0, GL_DIFFUSE, {40, 0.5, 0.5, 1})",
                  "glLightfv(GL_LIGHT0, GL_SPECULAR, {20, 1, 1, 1})",
                  "glLightfv(GL_LIGHT0, GL_POSITION, {10, 50, 0, 1})",
              }));
    EXPECT_EQ(doubles::Only("glMaterialfv", effects),
              Lines({"glMaterialfv(GL_FRONT, GL_SPECULAR, {30, 1, 1, 1})"}));
}

} // namespace
