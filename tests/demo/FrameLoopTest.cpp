// One frame after the other.
#include "FrameLoop.h"

#include "Loader.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "FmodEngine.h"

#include "Effects.h"
#include "ExpectedScene.h"
#include "Fmod.h"
#include "Glpng.h"
#include "ShowFixture.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using testing::Eq;
using testing::ExitedWithCode;
using testing::HasSubstr;

constexpr unsigned int skovr = 2; // the second texture that is loaded
constexpr unsigned int credits = 3;

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
    const std::string loading = EffectsOf([] { Loader(); });
    delete kasse;
    loaded = 0;
    doubles::glpng.nextName = 1;
    EXPECT_EQ(Frame(), loading + FrameLines(ExpectedScene{
                                     skovr, QuadraticSpectrum(), {0.1F, 0.2F, 0.3F}, 0.005F}));
}

TEST_F(FrameLoopTest, SecondFrameGoesStraightToTheShow) {
    FrameAt(0);
    const auto turned = [](float degrees) { return static_cast<float>(degrees + 0.1); };
    const float first = turned(0.3F);
    const float second = turned(first);
    EXPECT_EQ(
        FrameAt(15000),
        FrameLines(ExpectedScene{
            credits, {}, {first, second, turned(second)}, static_cast<float>(0.005F + 0.005)}));
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

TEST_F(FrameLoopTest, DrawsUpTo33000AndAtPositionsThatAreNegativeWhenSigned) {
    FrameAt(0);
    for (const unsigned int positionMs : {33000U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(doubles::Count("glutSwapBuffers", FrameAt(positionMs)), 1) << positionMs;
    }
}

TEST_F(FrameLoopTest, EndsFrom33001OnBeforeAnythingIsCleared) {
    FrameAt(0);
    for (const unsigned int positionMs : {33001U, 0x7FFFFFFFU}) {
        doubles::fmod.positions = {positionMs};
        EXPECT_EXIT(DrawUntilExit(), ExitedWithCode(0),
                    Eq(doubles::Lines({
                        R"(FMOD::Channel::isPlaying())",
                        R"(print "1")",
                        R"(FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS))",
                        R"(ShowCursor())",
                    })));
    }
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
