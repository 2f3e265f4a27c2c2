// The music's start and end, and what happens when the sound library refuses.
#include "FmodEngine.h"

#include "Bundle.h"
#include "Effects.h"
#include "Fixture.h"
#include "Fmod.h"

#include <gmock/gmock.h>

#include <iterator>
#include <memory>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::Eq;
using testing::ExitedWithCode;

class FmodEngineTest : public doubles::Fixture {
protected:
    static std::unique_ptr<engine::FmodEngine> Make() {
        std::unique_ptr<engine::FmodEngine> music;
        EffectsOf([&] { music = std::make_unique<engine::FmodEngine>("synchtune"); });
        return music;
    }

    // For death tests: what is done until the process ends.
    static void MakeNamed() {
        doubles::ReportEffectsAtExit([] { engine::FmodEngine music("synchtune"); });
    }
    static void MakeUnnamed() {
        doubles::ReportEffectsAtExit([] { engine::FmodEngine music; });
    }
    static void Destroy(std::unique_ptr<engine::FmodEngine>& music) {
        doubles::ReportEffectsAtExit([&] { music.reset(); });
    }
    static void Check(engine::FmodEngine& music, int code) {
        doubles::ReportEffectsAtExit(
            [&, code] { music.FmodCheckError(static_cast<FMOD_RESULT>(code)); });
    }
};

TEST_F(FmodEngineTest, NamedMusicStartsTheLibraryThenOpensItsResource) {
    std::unique_ptr<engine::FmodEngine> music;
    EXPECT_EQ(
        EffectsOf([&] { music = std::make_unique<engine::FmodEngine>("synchtune"); }),
        Lines({
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
            R"(print "OK\n")",
        }));
}

TEST_F(FmodEngineTest, UnnamedMusicOpensMusicWithoutMessages) {
    std::unique_ptr<engine::FmodEngine> music;
    EXPECT_EQ(
        EffectsOf([&] { music = std::make_unique<engine::FmodEngine>(); }),
        Lines({
            R"(CFBundleGetMainBundle())",
            R"(print "BasicInit - Initiated\n")",
            R"(FMOD::System_Create())",
            R"(FMOD::System::getVersion())",
            R"(FMOD::System::init(1, 0, null))",
            R"(print "BasicInit - Completed\n")",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "music", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "mp3", kCFStringEncodingMacRoman))",
            R"(CFBundleCopyResourceURL(main bundle, "music", "mp3", null))",
            R"(CFURLGetFileSystemRepresentation("/resources/music.mp3", true, 1024))",
            R"(CFRelease("music"))",
            R"(CFRelease("mp3"))",
            R"(CFRelease("/resources/music.mp3"))",
            R"(FMOD::System::createSound("/resources/music.mp3", FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D, null))",
        }));
}

TEST_F(FmodEngineTest, StartPrintsThreeLines) {
    std::unique_ptr<engine::FmodEngine> music;
    EXPECT_EQ(doubles::OutputOf([&] { music = std::make_unique<engine::FmodEngine>("synchtune"); }),
              "BasicInit - Initiated\n"
              "BasicInit - Completed\n"
              "Attempting to load file...OK\n");
}

TEST_F(FmodEngineTest, StartsStoppedAtVolume40WithoutAChannel) {
    doubles::fmod.version = 0x00040499;
    const auto music = Make();
    EXPECT_TRUE(music->stopped);
    EXPECT_EQ(music->volume, 40.0F);
    EXPECT_FALSE(music->mute);
    EXPECT_EQ(music->channel, nullptr);
    EXPECT_EQ(music->version, 0x00040499U);
    EXPECT_NE(music->system, nullptr);
    EXPECT_NE(music->sound, nullptr);
    EXPECT_EQ(music->bundle, CFBundleGetMainBundle());
}

TEST_F(FmodEngineTest, HasReadNothingWhenItIsMade) {
    const auto music = Make();
    EXPECT_EQ(music->lastResult, FMOD_OK);
    EXPECT_EQ(music->position, 0U);
    EXPECT_FALSE(music->paused);
    EXPECT_EQ(std::size(music->spectrum), 512U);
    EXPECT_THAT(music->spectrum, testing::Each(0.0F));
}

TEST_F(FmodEngineTest, BasicInitPutsTheFieldsBackToTheirDefaults) {
    const auto music = Make();
    EffectsOf([&] {
        music->Play();
        music->volume = 1;
        music->mute = true;
        music->BasicInit();
    });
    EXPECT_TRUE(music->stopped);
    EXPECT_EQ(music->volume, 40.0F);
    EXPECT_FALSE(music->mute);
    EXPECT_EQ(music->channel, nullptr);
}

TEST_F(FmodEngineTest, HasItsFieldsInOrder) {
    const auto music = Make();
    EXPECT_TRUE(doubles::AreInOrder({&music->bundle, &music->system, &music->sound, &music->channel,
                                     &music->lastResult, &music->position, &music->version,
                                     &music->spectrum, &music->volume, &music->mute,
                                     &music->stopped, &music->paused}));
}

TEST_F(FmodEngineTest, RequiredVersionGivesNoWarning) {
    doubles::fmod.version = 0x00040306;
    EXPECT_EQ(doubles::OutputOf([] { engine::FmodEngine music; }), "BasicInit - Initiated\n"
                                                                   "BasicInit - Completed\n");
}

TEST_F(FmodEngineTest, OlderVersionGivesAWarningAndGoesOn) {
    doubles::fmod.version = 0x00040305;
    EXPECT_EQ(doubles::OutputOf([] { engine::FmodEngine music("synchtune"); }),
              "BasicInit - Initiated\n"
              "Error!  You are using an old version of FMOD 00040305.  "
              "This program requires 00040306\n"
              "BasicInit - Completed\n"
              "Attempting to load file...OK\n");
}

TEST_F(FmodEngineTest, VersionIsWrittenInLowerCaseWithLeadingZeros) {
    doubles::fmod.version = 0x0000abcd;
    EXPECT_THAT(doubles::OutputOf([] { engine::FmodEngine music; }),
                testing::HasSubstr("FMOD 0000abcd.  This"));
}

TEST_F(FmodEngineTest, VersionIsComparedUnsigned) {
    doubles::fmod.version = 0x80000000U;
    EXPECT_THAT(doubles::OutputOf([] { engine::FmodEngine music; }),
                testing::Not(testing::HasSubstr("old version")));
}

TEST_F(FmodEngineTest, WarningComesBetweenTheVersionAndTheStart) {
    doubles::fmod.version = 1;
    EXPECT_THAT(EffectsOf([] { engine::FmodEngine music; }),
                testing::HasSubstr(Lines({
                    R"(FMOD::System::getVersion())",
                    R"(print "Error!  You are using an old version of FMOD 00000001.  )"
                    R"(This program requires 00040306\n")",
                    R"(FMOD::System::init(1, 0, null))",
                })));
}

TEST_F(FmodEngineTest, EndReleasesTheSoundThenClosesAndReleasesTheSystem) {
    auto music = Make();
    EXPECT_EQ(EffectsOf([&] { music.reset(); }), Lines({
                                                     "FMOD::Sound::release()",
                                                     "FMOD::System::close()",
                                                     "FMOD::System::release()",
                                                 }));
}

TEST_F(FmodEngineTest, CheckErrorPassesOverSuccess) {
    const auto music = Make();
    EXPECT_EQ(EffectsOf([&] { music->FmodCheckError(FMOD_OK); }), "");
}

TEST_F(FmodEngineTest, CheckErrorPrintsCodeAndTextAndEndsWith255) {
    auto music = Make();
    EXPECT_EXIT(Check(*music, 1), ExitedWithCode(255),
                Eq(Lines({R"(print "FMOD error! (1) )"
                          R"(Tried to call lock a second time before unlock was called. \n")"})));
    EXPECT_EXIT(Check(*music, 22), ExitedWithCode(255),
                Eq(Lines({R"(print "FMOD error! (22) File not found. \n")"})));
    EXPECT_EXIT(Check(*music, 68), ExitedWithCode(255),
                Eq(Lines({R"(print "FMOD error! (68) )"
                          R"(The version number of this file format is not supported. \n")"})));
}

TEST_F(FmodEngineTest, CheckErrorKnowsNoTextForCodesOutsideItsTable) {
    auto music = Make();
    EXPECT_EXIT(Check(*music, 69), ExitedWithCode(255),
                Eq(Lines({R"(print "FMOD error! (69) Unknown error.\n")"})));
    EXPECT_EXIT(Check(*music, -1), ExitedWithCode(255),
                Eq(Lines({R"(print "FMOD error! (-1) Unknown error.\n")"})));
}

TEST_F(FmodEngineTest, RefusedCreationEndsTheProcess) {
    doubles::fmod.results["FMOD::System_Create"] = FMOD_ERR_MEMORY;
    EXPECT_EXIT(MakeNamed(), ExitedWithCode(255),
                Eq(Lines({
                    R"(CFBundleGetMainBundle())",
                    R"(print "BasicInit - Initiated\n")",
                    R"(FMOD::System_Create())",
                    R"(print "FMOD error! (37) Not enough memory or resources. \n")",
                })));
}

TEST_F(FmodEngineTest, RefusedVersionEndsTheProcess) {
    doubles::fmod.results["FMOD::System::getVersion"] = FMOD_ERR_INVALID_PARAM;
    EXPECT_EXIT(
        MakeNamed(), ExitedWithCode(255),
        Eq(Lines({
            R"(CFBundleGetMainBundle())",
            R"(print "BasicInit - Initiated\n")",
            R"(FMOD::System_Create())",
            R"(FMOD::System::getVersion())",
            R"(print "FMOD error! (34) An invalid parameter was passed to this function. \n")",
        })));
}

TEST_F(FmodEngineTest, RefusedStartEndsTheProcess) {
    doubles::fmod.results["FMOD::System::init"] = static_cast<FMOD_RESULT>(52);
    EXPECT_EXIT(MakeNamed(), ExitedWithCode(255),
                Eq(Lines({
                    R"(CFBundleGetMainBundle())",
                    R"(print "BasicInit - Initiated\n")",
                    R"(FMOD::System_Create())",
                    R"(FMOD::System::getVersion())",
                    R"(FMOD::System::init(1, 0, null))",
                    R"(print "FMOD error! (52) Error initializing output device. \n")",
                })));
}

TEST_F(FmodEngineTest, MissingMusicEndsTheProcessOnTheLineOfTheAttempt) {
    doubles::bundle.paths.clear();
    EXPECT_EXIT(
        MakeNamed(), ExitedWithCode(255),
        Eq(Lines({
            R"(CFBundleGetMainBundle())",
            R"(print "BasicInit - Initiated\n")",
            R"(FMOD::System_Create())",
            R"(FMOD::System::getVersion())",
            R"(FMOD::System::init(1, 0, null))",
            R"(print "BasicInit - Completed\nAttempting to load file...")",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "synchtune", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "mp3", kCFStringEncodingMacRoman))",
            R"(CFBundleCopyResourceURL(main bundle, "synchtune", "mp3", null))",
            R"(CFURLGetFileSystemRepresentation(null, true, 1024))",
            R"(print "WARNING: CFURLGetFileSystemRepresentation returned FALSE\n")",
            R"(CFRelease("synchtune"))",
            R"(CFRelease("mp3"))",
            R"(FMOD::System::createSound("", FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D, null))",
            R"(print "FMOD error! (22) File not found. \n")",
        })));
}

TEST_F(FmodEngineTest, UnreadableMusicEndsTheProcess) {
    doubles::fmod.results["FMOD::System::createSound"] = FMOD_ERR_FORMAT;
    EXPECT_EXIT(MakeNamed(), ExitedWithCode(255),
                testing::EndsWith("print \"FMOD error! (24) Unsupported file or audio format. "
                                  "\\n\"\n"));
    EXPECT_EXIT(MakeUnnamed(), ExitedWithCode(255),
                testing::EndsWith("print \"FMOD error! (24) Unsupported file or audio format. "
                                  "\\n\"\n"));
}

TEST_F(FmodEngineTest, RefusedReleaseOfTheSoundEndsTheProcess) {
    auto music = Make();
    const auto refuse = [&] {
        doubles::fmod.results["FMOD::Sound::release"] = FMOD_ERR_INVALID_HANDLE;
        Destroy(music);
    };
    EXPECT_EXIT(refuse(), ExitedWithCode(255),
                Eq(Lines({
                    R"(FMOD::Sound::release())",
                    R"(print "FMOD error! (33) An invalid object handle was used. \n")",
                })));
}

TEST_F(FmodEngineTest, RefusedCloseEndsTheProcess) {
    auto music = Make();
    const auto refuse = [&] {
        doubles::fmod.results["FMOD::System::close"] = FMOD_ERR_INVALID_HANDLE;
        Destroy(music);
    };
    EXPECT_EXIT(refuse(), ExitedWithCode(255),
                Eq(Lines({
                    R"(FMOD::Sound::release())",
                    R"(FMOD::System::close())",
                    R"(print "FMOD error! (33) An invalid object handle was used. \n")",
                })));
}

TEST_F(FmodEngineTest, RefusedReleaseOfTheSystemEndsTheProcess) {
    auto music = Make();
    const auto refuse = [&] {
        doubles::fmod.results["FMOD::System::release"] = FMOD_ERR_INVALID_HANDLE;
        Destroy(music);
    };
    EXPECT_EXIT(refuse(), ExitedWithCode(255),
                Eq(Lines({
                    R"(FMOD::Sound::release())",
                    R"(FMOD::System::close())",
                    R"(FMOD::System::release())",
                    R"(print "FMOD error! (33) An invalid object handle was used. \n")",
                })));
}

} // namespace
