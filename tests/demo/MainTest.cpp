// From the first call of main to its last, and the ways out.
#include "main.h"

#include "DemoEngine.h"
#include "FmodEngine.h"
#include "TimeEngine.h"

#include "Alerts.h"
#include "Bundle.h"
#include "Effects.h"
#include "Fmod.h"
#include "Glut.h"
#include "RealMain.h"
#include "ShowFixture.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::Eq;
using testing::ExitedWithCode;
using testing::HasSubstr;

int RunMain() {
    char program[] = "skovra";
    char option[] = "-geometry";
    char value[] = "800x600";
    char* arguments[] = {program, option, value, nullptr};
    return __real_main(3, arguments);
}

/// What main does once there is a display.
const std::string fromTheDisplayOn = Lines({
    R"(print "Configuring FMOD\n")",
    R"(glutDisplayFunc(DrawGLScene))",
    R"(glutReshapeFunc(engine::ReSizeGLScene))",
    R"(glutKeyboardFunc(KeyboardFunc))",
    R"(glutTimerFunc(25, TimerFunc, 1))",
    R"(glutMainLoop())",
    R"(objc_msgSend(pool, release))",
});

std::string Times(int count, const std::string& lines) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += lines;
    }
    return all;
}

class MainTest : public ShowFixture {
protected:
    static std::string EffectsOfMain() {
        return EffectsOf([] { RunMain(); });
    }

    /// The lines of @p effects from the one that begins with @p first on.
    static std::string From(const std::string& first, const std::string& effects) {
        const std::size_t place = effects.find("\n" + first);
        return place == std::string::npos ? "" : effects.substr(place + 1);
    }
};

TEST_F(MainTest, GlobalsStartEmpty) {
    EXPECT_EQ(demo, nullptr);
    EXPECT_EQ(REF_MS_EXTERN, 0);
    EXPECT_EQ(loaded, 0);
}

TEST_F(MainTest, StartsEverythingInOrder) {
    doubles::alerts.answer = 2;
    EXPECT_EQ(
        EffectsOfMain(),
        Lines({
            R"(objc_getClass("NSAutoreleasePool"))",
            R"(objc_msgSend(NSAutoreleasePool, alloc))",
            R"(objc_msgSend(allocated pool, init))",

            R"(CFBundleGetMainBundle())",
            R"(CFBundleGetMainBundle())",
            R"(print "\"QVZ 02 - Skovra\"\nTarvelund 2006 - Halvmork.\nUsing DemoEngine(tm) version: 6\nSettings:\n Sound : 1\n\n")",

            R"(CFBundleGetMainBundle())",
            R"(print "BasicInit - Initiated\n")",
            R"(FMOD::System_Create())",
            R"(FMOD::System::getVersion())",
            R"(FMOD::System::init(1, 0, null))",
            R"(print "BasicInit - Completed\nAttempting to load file...")",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "synchtune", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "mp3", kCFStringEncodingMacRoman))",
            R"(CFBundleCopyResourceURL(main bundle, "synchtune", "mp3", null))",
            R"(CFURLGetFileSystemRepresentation("/resources/synchtune.mp3", true, 1024))",
            R"(CFRelease("synchtune"))",
            R"(CFRelease("mp3"))",
            R"(CFRelease("/resources/synchtune.mp3"))",
            R"(FMOD::System::createSound("/resources/synchtune.mp3", FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D, null))",
            R"(print "OK\nFMOD - Initiated\n")",

            R"(glutInit(3, "skovra -geometry 800x600"))",

            R"(CFStringCreateWithCString(kCFAllocatorDefault, "\"QVZ 02 - Skovra\"", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Copyright \xA9 2005 Halvmork.", kCFStringEncodingMacRoman))",
            R"(CreateStandardAlert(kAlertStopAlert, "\"QVZ 02 - Skovra\"", "Copyright \xA9 2005 Halvmork.", null))",
            R"(RunStandardAlert(alert, null))",
            R"(CFRelease("\"QVZ 02 - Skovra\""))",
            R"(CFRelease("Copyright \xA9 2005 Halvmork."))",

            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Yes", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "No", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "\"QVZ 02 - Skovra\"", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Skal du kj\xBFre Skovra i fullskjerm?", kCFStringEncodingMacRoman))",
            R"(CreateStandardAlert(kAlertStopAlert, "\"QVZ 02 - Skovra\"", "Skal du kj\xBFre Skovra i fullskjerm?", {1, true, false, "Yes", "No", null, 1, 2, 0, 0}))",
            R"(RunStandardAlert(alert, null))",
            R"(CFRelease("\"QVZ 02 - Skovra\""))",
            R"(CFRelease("Skal du kj\xBFre Skovra i fullskjerm?"))",
            R"(CFRelease("Yes"))",
            R"(CFRelease("No"))",

            R"(CFStringCreateWithCString(kCFAllocatorDefault, "\"QVZ 02 - Skovra\"", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "Oh, oh, oh, getting all high and mighty, WINDOW MODE, yeah whatever.", kCFStringEncodingMacRoman))",
            R"(CreateStandardAlert(kAlertStopAlert, "\"QVZ 02 - Skovra\"", "Oh, oh, oh, getting all high and mighty, WINDOW MODE, yeah whatever.", null))",
            R"(RunStandardAlert(alert, null))",
            R"(CFRelease("\"QVZ 02 - Skovra\""))",
            R"(CFRelease("Oh, oh, oh, getting all high and mighty, WINDOW MODE, yeah whatever."))",

            R"(glutInitDisplayMode(18))",
            R"(glutInitWindowSize(1024, 768))",
            R"(glutInitWindowPosition(200, 200))",
            R"(glutCreateWindow("\"QVZ 02 - Skovra\""))",
        }) + fromTheDisplayOn);
}

TEST_F(MainTest, YesConfirmsAndOpensTheFullScreen) {
    doubles::alerts.answer = 1;
    const std::string effects = EffectsOfMain();
    EXPECT_THAT(
        effects,
        HasSubstr(
            R"(CreateStandardAlert(kAlertStopAlert, "\"QVZ 02 - Skovra\"", "OK, fullskjermspowwah!", null))"));
    EXPECT_EQ(From("glutInitDisplayMode", effects), Lines({
                                                        "glutInitDisplayMode(18)",
                                                        "glutFullScreen()",
                                                        "glutEnterGameMode()",
                                                        "HideCursor()",
                                                    }) + fromTheDisplayOn);
}

TEST_F(MainTest, BoxesThatCannotBeShownMeanAWindow) {
    doubles::alerts.canBeShown = false;
    const std::string effects = EffectsOfMain();
    EXPECT_THAT(effects, HasSubstr("glutCreateWindow("));
    EXPECT_EQ(doubles::Count("RunStandardAlert(null, null)", effects), 3);
    EXPECT_EQ(doubles::UnreleasedObjects(), 0U);
}

TEST_F(MainTest, Returns0WhenTheMainLoopReturns) {
    int result = -1;
    EffectsOf([&] { result = RunMain(); });
    EXPECT_EQ(result, 0);
}

TEST_F(MainTest, LeavesTheEngineComplete) {
    EffectsOfMain();
    ASSERT_NE(demo, nullptr);
    EXPECT_EQ(demo->title, "\"QVZ 02 - Skovra\"");
    EXPECT_EQ(demo->title.size(), 17U);
    ASSERT_NE(demo->fmod, nullptr);
    EXPECT_EQ(demo->fmod->volume, 175.0F);
    EXPECT_TRUE(demo->fmod->stopped);
    ASSERT_NE(demo->time, nullptr);
    EXPECT_EQ(demo->time->fmod, demo->fmod);
    EXPECT_EQ(loaded, 0);
}

TEST_F(MainTest, ExportsTheFramePeriodBeforeTheFirstTimerIsArmed) {
    int period = 0;
    doubles::glut.timerArmed = [&] { period = REF_MS_EXTERN; };
    EffectsOfMain();
    EXPECT_EQ(period, 25);
}

TEST_F(MainTest, MissingMusicEndsTheProgramBeforeAnythingIsShown) {
    doubles::bundle.paths.erase("synchtune.mp3");
    EXPECT_EXIT(
        doubles::ReportEffectsAtExit([] { RunMain(); }), ExitedWithCode(255),
        testing::AllOf(testing::EndsWith("print \"FMOD error! (22) File not found. \\n\"\n"),
                       testing::Not(HasSubstr("glut")), testing::Not(HasSubstr("Alert"))));
}

TEST_F(MainTest, WholeShowEndsByItselfAfter33Seconds) {
    doubles::glut.mainLoop = [] {
        doubles::glut.reshape(1024, 768);
        for (const unsigned int position : {0U, 14000U, 28000U, 33000U, 33001U}) {
            doubles::fmod.positions = {position};
            doubles::glut.timer(doubles::glut.timerValue);
            doubles::glut.display();
        }
    };
    const auto outline = [](const std::string& effects) {
        return doubles::Only("glBind", effects) + doubles::Only("print \"1", effects) +
               doubles::Only("glut", From("glutMainLoop", effects)) +
               doubles::Only("ShowCursor", effects) + doubles::Only("objc_msgSend(pool", effects);
    };
    const std::string tickAndRedisplay =
        Lines({"glutSwapBuffers()", "glutTimerFunc(25, TimerFunc, 1)", "glutPostRedisplay()",
               "glutSwapBuffers()"});
    const std::string expected =
        Times(4, "glBindTexture(GL_TEXTURE_2D, 2)\n") + // two frames at each position
        Times(2, "glBindTexture(GL_TEXTURE_2D, 3)\n") + Times(9, "print \"1\"\n") +
        "glutMainLoop()\n" + Times(4, tickAndRedisplay) + "ShowCursor()\n";
    EXPECT_EXIT(doubles::ReportEffectsAtExit([] { RunMain(); }), ExitedWithCode(0),
                testing::ResultOf(outline, Eq(expected)));
}

TEST_F(MainTest, EscapeInTheMainLoopEndsTheProgram) {
    doubles::alerts.answer = 1; // full screen, where the cursor was hidden
    doubles::glut.mainLoop = [] { doubles::glut.keyboard(27, 0, 0); };
    EXPECT_EXIT(doubles::ReportEffectsAtExit([] { RunMain(); }), ExitedWithCode(0),
                testing::EndsWith("glutMainLoop()\nShowCursor()\n"));
}

TEST_F(MainTest, EveryOtherKeyIsIgnored) {
    EXPECT_EQ(EffectsOf([] {
                  for (int key = 0; key < 256; ++key) {
                      if (key != 27) {
                          KeyboardFunc(static_cast<unsigned char>(key), 0, 0);
                      }
                  }
              }),
              "");
}

} // namespace
