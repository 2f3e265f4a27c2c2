// The start of the show, inside the first frame.
#include "Loader.h"

#include "OpenGLState.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "FmodEngine.h"
#include "TextureManager.h"

#include "Bundle.h"
#include "Effects.h"
#include "ShowFixture.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::ElementsAre;
using testing::Pair;

class LoaderTest : public ShowFixture {
protected:
    LoaderTest() { MakeDemo(); }
};

TEST_F(LoaderTest, GlobalsStartAtZero) {
    EXPECT_EQ(rotate, 0.0F);
    EXPECT_EQ(globalAngle, 0.0F);
    EXPECT_EQ(kasse, nullptr);
    EXPECT_EQ(loaded, 0);
}

TEST_F(LoaderTest, SetsOpenGLUpLoadsAndThenStartsTheMusic) {
    const std::string settings = EffectsOf([] { SetGL(); });
    const std::string textures = EffectsOf([] { LoadTextures(); });
    demo->textures->textures.clear();
    EXPECT_EQ(doubles::Count("pngBind", textures), 3);

    const std::string effects = EffectsOf([] { Loader(); });

    // Three more loads make three more names, but names stand in no call of the loader.
    EXPECT_EQ(effects, Lines({R"(print "Setting OpenGL settings\n")"}) + settings +
                           Lines({R"(print "Loading Textures...\n")"}) + textures +
                           Lines({
                               "glColor3f(1, 1, 1)",
                               "FMOD::System::playSound(FMOD_CHANNEL_FREE, sound, false)",
                               "FMOD::System::update()",
                               "FMOD::System::update()",
                           }));
}

TEST_F(LoaderTest, LeavesTheShowReadyToRun) {
    Load();
    EXPECT_EQ(loaded, 1);
    ASSERT_NE(kasse, nullptr);
    EXPECT_EQ(kasse->width, 1.0F);
    EXPECT_EQ(kasse->texture, 0);
    EXPECT_FALSE(demo->fmod->stopped);
    EXPECT_THAT(demo->textures->textures,
                ElementsAre(Pair("credits", 3), Pair("skovr", 2), Pair("texture", 1)));
}

TEST_F(LoaderTest, LoadsTheThreePicturesInOrder) {
    EXPECT_EQ(
        doubles::Only("pngBind", EffectsOf([] { LoadTextures(); })),
        Lines({
            R"(pngBind("/resources/texture.png", PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR, GL_LINEAR))",
            R"(pngBind("/resources/skovr.png", PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR, GL_LINEAR))",
            R"(pngBind("/resources/credits.png", PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR, GL_LINEAR))",
        }));
}

TEST_F(LoaderTest, MissingPictureIsStoredAs0AndTheShowStarts) {
    doubles::bundle.paths.erase("skovr.png");
    const std::string printed = doubles::OutputOf([] { Loader(); });
    EXPECT_EQ(printed, "Setting OpenGL settings\n"
                       "Loading Textures...\n"
                       "WARNING: CFURLGetFileSystemRepresentation returned FALSE\n");
    EXPECT_THAT(demo->textures->textures,
                ElementsAre(Pair("credits", 3), Pair("skovr", 0), Pair("texture", 1)));
    EXPECT_EQ(loaded, 1);
    EXPECT_FALSE(demo->fmod->stopped);
}

TEST_F(LoaderTest, LoaderGraphicsPresentsAnEmptyFrameWhateverItsArgument) {
    for (const int progress : {0, 5}) {
        EXPECT_EQ(EffectsOf([&] { LoaderGraphics(progress); }),
                  Lines({
                      "glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)",
                      "glMatrixMode(GL_MODELVIEW)",
                      "glLoadIdentity()",
                      "glutSwapBuffers()",
                  }))
            << progress;
    }
}

} // namespace
