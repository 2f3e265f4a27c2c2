// One frame after the other.
#include "FrameLoop.h"

#include "Loader.h"
#include "main.h"

#include "DemoEngine.h"
#include "FmodEngine.h"
#include "TimeEngine.h"

#include "Effects.h"
#include "ExpectedScene.h"
#include "Fmod.h"
#include "OpenGL.h"
#include "ShowFixture.h"

#include <GL/gl.h>
#include <gmock/gmock.h>

#include <optional>
#include <string>

namespace {

using doubles::EffectsOf;
using testing::Eq;
using testing::ExitedWithCode;
using testing::HasSubstr;

constexpr unsigned int skovr = 2; // the second texture that is loaded
constexpr unsigned int credits = 3;

/// From the question whether the music plays to the scene.
std::string FrameBeginning() {
    return doubles::Lines({
        R"(FMOD::Channel::isPlaying())",
        R"(print "1")",
        R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
        R"(FMOD::System::getSpectrum(512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE))",
        R"(glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT))",
        R"(glMatrixMode(GL_MODELVIEW))",
        R"(glLoadIdentity())",
        R"(glEnable(GL_BLEND))",
        R"(glEnable(GL_TEXTURE_2D))",
        R"(glTranslatef(0, 0, -1100))",
        R"(FMOD::System::getSpectrum(512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE))",
        R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
        R"(glPushMatrix())",
        R"(glTranslatef(0, 0, -200))",
    });
}

std::string FrameEnd() {
    return doubles::Lines({"glPopMatrix()", "glutSwapBuffers()"});
}

/// The calls that load @p name with the texture manager.
std::string TextureLoading(const std::string& name) {
    return doubles::Lines({
        "CFStringCreateWithCString(kCFAllocatorDefault, \"" + name +
            "\", kCFStringEncodingMacRoman)",
        "CFStringCreateWithCString(kCFAllocatorDefault, \"png\", kCFStringEncodingMacRoman)",
        "CFBundleCopyResourceURL(main bundle, \"" + name + "\", \"png\", null)",
        "CFURLGetFileSystemRepresentation(\"/resources/" + name + ".png\", true, 1024)",
        "CFRelease(\"" + name + "\")",
        "CFRelease(\"png\")",
        "CFRelease(\"/resources/" + name + ".png\")",
        "pngBind(\"/resources/" + name +
            ".png\", PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR, GL_LINEAR)",
    });
}

class FrameLoopTest : public ShowFixture {
protected:
    FrameLoopTest() {
        MakeDemo();
        REF_MS_EXTERN = 25;
    }

    static std::string Frame() {
        return EffectsOf([] { DrawGLScene(); });
    }

    static std::string FrameAt(unsigned int positionMs) {
        doubles::fmod.positions = {positionMs};
        return Frame();
    }

    /// For death tests.
    static void DrawUntilExit() {
        doubles::ReportEffectsAtExit([] { DrawGLScene(); });
    }
};

TEST_F(FrameLoopTest, FirstFrameLoadsAndThenDraws) {
    doubles::fmod.spectra = {QuadraticSpectrum()};
    EXPECT_EQ(Frame(),
              doubles::Lines({
                  R"(print "Setting OpenGL settings\n")",
                  R"(glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA))",
                  R"(glAlphaFunc(GL_GREATER, 0.1))",
                  R"(glClearColor(0, 0, 0, 0))",
                  R"(glEnable(GL_DEPTH_TEST))",
                  R"(glEnable(GL_TEXTURE_2D))",
                  R"(glClearDepth(9))",
                  R"(glDepthFunc(GL_LEQUAL))",
                  R"(glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST))",
                  R"(glDisable(GL_LIGHT0))",
                  R"(glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0.6, 0.6, 0.6, 1}))",
                  R"(glLightfv(GL_LIGHT0, GL_DIFFUSE, {0.6, 0.6, 0.6, 1}))",
                  R"(glLightfv(GL_LIGHT0, GL_SPECULAR, {1, 1, 1, 1}))",
                  R"(glLightfv(GL_LIGHT0, GL_POSITION, {0, 50, 0, 1}))",
                  R"(glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 60))",
                  R"(glEnable(GL_LIGHT0))",
                  R"(glEnable(GL_COLOR_MATERIAL))",
                  R"(glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE))",
                  R"(glMaterialfv(GL_FRONT, GL_SPECULAR, {1, 1, 1, 1}))",
                  R"(glMateriali(GL_FRONT, GL_SHININESS, 128))",
                  R"(print "Loading Textures...\n")",
              }) + TextureLoading("texture") +
                  TextureLoading("skovr") + TextureLoading("credits") +
                  doubles::Lines({
                      R"(glColor3f(1, 1, 1))",
                      R"(FMOD::System::playSound(FMOD_CHANNEL_FREE, sound, false))",
                      R"(FMOD::System::update())",
                      R"(FMOD::System::update())",
                  }) +
                  FrameBeginning() +
                  Lines(ExpectedScene{skovr, QuadraticSpectrum(), {0.1F, 0.2F, 0.3F}, 0.005F}) +
                  FrameEnd());
}

TEST_F(FrameLoopTest, SecondFrameGoesStraightToTheShow) {
    FrameAt(0);
    const auto turned = [](float degrees) { return static_cast<float>(degrees + 0.1); };
    const float first = turned(0.3F);
    const float second = turned(first);
    EXPECT_EQ(
        FrameAt(15000),
        FrameBeginning() +
            Lines(ExpectedScene{
                credits, {}, {first, second, turned(second)}, static_cast<float>(0.005F + 0.005)}) +
            FrameEnd());
}

TEST_F(FrameLoopTest, LoaderRunsInTheFirstOfManyFramesOnly) {
    const std::string effects = EffectsOf([] {
        for (int frame = 0; frame < 20; ++frame) {
            DrawGLScene();
        }
    });
    EXPECT_EQ(doubles::Count("FMOD::System::playSound", effects), 1);
    EXPECT_EQ(doubles::Count("pngBind", effects), 3);
    EXPECT_EQ(doubles::Count("glClearDepth", effects), 1);
    EXPECT_EQ(doubles::Count("glutSwapBuffers", effects), 20);
}

TEST_F(FrameLoopTest, FrameAsksForThePositionFourTimesAndThreeTimesWithoutAPicture) {
    FrameAt(0);
    EXPECT_EQ(doubles::Count("FMOD::Channel::getPosition", FrameAt(29999)), 4);
    EXPECT_EQ(doubles::Count("FMOD::Channel::getPosition", FrameAt(30000)), 3);
}

TEST_F(FrameLoopTest, ScenesSeeTheSecondSpectrumOfAFrame) {
    FrameAt(0);
    doubles::Spectrum first{};
    first.fill(1.0F);
    doubles::fmod.spectra = {first, QuadraticSpectrum()};
    FrameAt(0);
    EXPECT_EQ(demo->fmod->spectrum[100], 10000.0F / 65536.0F);
    doubles::fmod.spectra = {first, doubles::Spectrum{}};
    EXPECT_THAT(FrameAt(30000), HasSubstr("glVertex3f(4.7, 0, 0)\n"
                                          "glTexCoord2f(0, 0)\n"));
}

TEST_F(FrameLoopTest, TracesADigitForEveryFrame) {
    FrameAt(0);
    EXPECT_EQ(doubles::OutputOf([] {
                  DrawGLScene();
                  DrawGLScene();
                  doubles::fmod.playing = false;
                  DrawGLScene();
              }),
              "110");
}

TEST_F(FrameLoopTest, FrameTicksTheClock) {
    FrameAt(0);
    FrameAt(1000);
    FrameAt(1040);
    EXPECT_EQ(demo->time->curTime, 1040);
    EXPECT_EQ(demo->time->deltaTime, 40);
}

TEST_F(FrameLoopTest, DrawsAtExactly33000) {
    FrameAt(0);
    EXPECT_EQ(doubles::Count("glutSwapBuffers", FrameAt(33000)), 1);
}

TEST_F(FrameLoopTest, EndsAt33001BeforeAnythingIsCleared) {
    FrameAt(0);
    doubles::fmod.positions = {33001};
    EXPECT_EXIT(DrawUntilExit(), ExitedWithCode(0),
                Eq(doubles::Lines({
                    R"(FMOD::Channel::isPlaying())",
                    R"(print "1")",
                    R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
                    R"(ShowCursor())",
                })));
}

TEST_F(FrameLoopTest, EndsAtTheLargestSignedPosition) {
    FrameAt(0);
    doubles::fmod.positions = {0x7FFFFFFFU};
    EXPECT_EXIT(DrawUntilExit(), ExitedWithCode(0), HasSubstr("ShowCursor()"));
}

TEST_F(FrameLoopTest, PositionsThatAreNegativeWhenSignedDoNotEndTheShow) {
    FrameAt(0);
    EXPECT_EQ(doubles::Count("glutSwapBuffers", FrameAt(0x80000000U)), 1);
    EXPECT_EQ(doubles::Count("glutSwapBuffers", FrameAt(0xFFFFFFFFU)), 1);
}

TEST_F(FrameLoopTest, FirstFrameAlreadyEndsWhenThePositionHasPassed) {
    doubles::fmod.positions = {33001};
    EXPECT_EXIT(DrawUntilExit(), ExitedWithCode(0),
                testing::AllOf(HasSubstr("FMOD::System::playSound"), HasSubstr("ShowCursor()"),
                               testing::Not(HasSubstr("glClear("))));
}

TEST_F(FrameLoopTest, MusicThatIsOverDoesNotEndTheShowByItself) {
    FrameAt(0);
    doubles::fmod.playing = false;
    EXPECT_EQ(doubles::Count("glutSwapBuffers", FrameAt(20000)), 1);
}

TEST_F(FrameLoopTest, BlendingAndTexturingAreEnabledAgainInEveryFrame) {
    FrameAt(0);
    doubles::openGL.enabled.clear();
    EffectsOf([] { DrawWhat(); });
    EXPECT_TRUE(doubles::openGL.enabled.contains(GL_BLEND));
    EXPECT_TRUE(doubles::openGL.enabled.contains(GL_TEXTURE_2D));
}

TEST_F(FrameLoopTest, RefusedSpectrumAndUpdateDoNotEndTheShow) {
    FrameAt(0);
    doubles::fmod.results["FMOD::System::getSpectrum"] = FMOD_ERR_UNINITIALIZED;
    doubles::fmod.results["FMOD::System::update"] = FMOD_ERR_UNINITIALIZED;
    EXPECT_EQ(doubles::Count("glutSwapBuffers", FrameAt(100)), 1);
}

TEST_F(FrameLoopTest, RefusedPositionEndsTheShow) {
    FrameAt(0);
    doubles::fmod.results["FMOD::Channel::getPosition"] = FMOD_ERR_INVALID_HANDLE;
    EXPECT_EXIT(DrawUntilExit(), ExitedWithCode(255),
                Eq(doubles::Lines({
                    R"(FMOD::Channel::isPlaying())",
                    R"(print "1")",
                    R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
                    R"(print "FMOD error! (33) An invalid object handle was used. \n")",
                })));
}

TEST_F(FrameLoopTest, RefusedPlayEndsTheShowInItsFirstFrame) {
    doubles::fmod.results["FMOD::System::playSound"] = static_cast<FMOD_RESULT>(10);
    EXPECT_EXIT(DrawUntilExit(), ExitedWithCode(255),
                testing::EndsWith("FMOD::System::playSound(FMOD_CHANNEL_FREE, sound, false)\n"
                                  "print \"FMOD error! (10) Error trying to allocate a channel. "
                                  "\\n\"\n"));
}

TEST_F(FrameLoopTest, TickDrawsThenArmsItselfThenPostsARedisplay) {
    FrameAt(0);
    rotate = globalAngle = 0.0F;
    const std::string expected = FrameAt(30000);
    rotate = globalAngle = 0.0F;
    EXPECT_EQ(EffectsOf([] { TimerFunc(1); }), expected + doubles::Lines({
                                                              "glutTimerFunc(25, TimerFunc, 1)",
                                                              "glutPostRedisplay()",
                                                          }));
}

TEST_F(FrameLoopTest, TickArmsItselfWithTheExportedPeriodWhateverItsValue) {
    FrameAt(0);
    REF_MS_EXTERN = 40;
    EXPECT_THAT(EffectsOf([] { TimerFunc(99); }), HasSubstr("glutTimerFunc(40, TimerFunc, 1)\n"));
}

} // namespace
