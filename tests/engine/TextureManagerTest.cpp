// Textures by key.
#include "TextureManager.h"

#include "Bundle.h"
#include "Effects.h"
#include "Fixture.h"
#include "Glpng.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class TextureManagerTest : public doubles::Fixture {
protected:
    void Load(const std::string& file, const std::string& type, const std::string& key) {
        EffectsOf([&] { manager.LoadTexture(file, type, key); });
    }

    engine::TextureManager manager;
};

TEST_F(TextureManagerTest, StartsEmptyOnTheMainBundle) {
    EXPECT_THAT(manager.textures, IsEmpty());
    EXPECT_EQ(manager.bundle, CFBundleGetMainBundle());
}

TEST_F(TextureManagerTest, HasItsFieldsInOrder) {
    EXPECT_TRUE(doubles::AreInOrder({&manager.bundle, &manager.info, &manager.textures}));
}

TEST_F(TextureManagerTest, LoadPngReadsTheResourceRepeatedAndLinear) {
    unsigned int name = 0;
    doubles::glpng.nextName = 12;
    const std::string effects = EffectsOf([&] { name = manager.LoadPNG("skovr"); });
    EXPECT_EQ(name, 12U);
    EXPECT_EQ(
        effects,
        doubles::LookupLines("skovr", "png") +
            Lines({
                R"(pngBind("/resources/skovr.png", PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR, GL_LINEAR))",
            }));
}

TEST_F(TextureManagerTest, InfoIsThatOfTheFileLoadedLast) {
    doubles::glpng.info = {1, 2, 3, 4};
    Load("skovr", "png", "a");
    doubles::glpng.info = {5, 6, 7, 8};
    Load("credits", "png", "b");
    EXPECT_EQ(manager.info.Width, 5U);
    EXPECT_EQ(manager.info.Height, 6U);
    EXPECT_EQ(manager.info.Depth, 7U);
    EXPECT_EQ(manager.info.Alpha, 8U);
}

TEST_F(TextureManagerTest, MissingResourceWarnsAndStores0) {
    const std::string effects = EffectsOf([&] { manager.LoadTexture("absent", "png", "key"); });
    EXPECT_EQ(doubles::Only("print ", effects),
              Lines({R"(print "WARNING: CFURLGetFileSystemRepresentation returned FALSE\n")"}));
    EXPECT_EQ(
        doubles::Only("pngBind", effects),
        Lines({R"(pngBind("", PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR, GL_LINEAR))"}));
    EXPECT_THAT(manager.textures, ElementsAre(Pair("key", 0)));
}

TEST_F(TextureManagerTest, CorruptFileStores0Silently) {
    doubles::glpng.corrupt = {"/resources/skovr.png"};
    const std::string effects = EffectsOf([&] { manager.LoadTexture("skovr", "png", "key"); });
    EXPECT_EQ(doubles::Only("print ", effects), "");
    EXPECT_THAT(manager.textures, ElementsAre(Pair("key", 0)));
}

TEST_F(TextureManagerTest, AnyOtherTypeReadsNoFileAndStores0) {
    for (const char* type : {"PNG", "Png", "png ", "", "jpg"}) {
        manager.textures["key"] = 5;
        EXPECT_EQ(EffectsOf([&] { manager.LoadTexture("skovr", type, "key"); }), "") << type;
        EXPECT_EQ(manager.textures["key"], 0) << type;
    }
}

TEST_F(TextureManagerTest, LoadingAKeyAgainReplacesTheNameAndDeletesNothing) {
    doubles::glpng.nextName = 12;
    Load("skovr", "png", "key");
    const std::string effects = EffectsOf([&] { manager.LoadTexture("credits", "png", "key"); });
    EXPECT_EQ(doubles::Count("gl", effects), 0);
    EXPECT_THAT(manager.textures, ElementsAre(Pair("key", 13)));
}

TEST_F(TextureManagerTest, TwoKeysOfOneFileHaveATextureEach) {
    doubles::glpng.nextName = 12;
    Load("skovr", "png", "a");
    Load("skovr", "png", "b");
    EXPECT_THAT(manager.textures, ElementsAre(Pair("a", 12), Pair("b", 13)));
}

TEST_F(TextureManagerTest, GetTextureBindsTheTextureOfTheKey) {
    manager.textures = {{"skovr", 12}, {"credits", 13}};
    EXPECT_EQ(EffectsOf([&] { manager.GetTexture("credits"); }),
              Lines({"glBindTexture(GL_TEXTURE_2D, 13)"}));
    EXPECT_EQ(EffectsOf([&] { manager.GetTexture("skovr"); }),
              Lines({"glBindTexture(GL_TEXTURE_2D, 12)"}));
}

TEST_F(TextureManagerTest, UnknownKeyBinds0AndIsStoredWith0) {
    EXPECT_EQ(EffectsOf([&] { manager.GetTexture("unknown"); }),
              Lines({"glBindTexture(GL_TEXTURE_2D, 0)"}));
    EXPECT_THAT(manager.textures, ElementsAre(Pair("unknown", 0)));
}

} // namespace
