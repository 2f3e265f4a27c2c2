// The music's start and end, and what happens when the sound library refuses.
#include "FmodEngine.h"

#include "Bundle.h"
#include "Effects.h"
#include "Fixture.h"
#include "Fmod.h"

#include <gmock/gmock.h>

#include <iterator>
#include <map>
#include <memory>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::Eq;
using testing::ExitedWithCode;

const std::string startLines = Lines({
    R"(CFBundleGetMainBundle())",
    R"(print "BasicInit - Initiated\n")",
    R"(FMOD::System_Create())",
    R"(FMOD::System::getVersion())",
    R"(FMOD::System::init(1, 0, null))",
});

const std::string endLines = Lines({
    "FMOD::Sound::release()",
    "FMOD::System::close()",
    "FMOD::System::release()",
});

/// Of @p effects the lines up to the call of @p operation.
std::string UpTo(const std::string& operation, const std::string& effects) {
    return effects.substr(0, effects.find('\n', effects.find(operation + "(")) + 1);
}

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
    static void Check(engine::FmodEngine& music, int code) {
        doubles::ReportEffectsAtExit(
            [&, code] { music.FmodCheckError(static_cast<FMOD_RESULT>(code)); });
    }
};

TEST_F(FmodEngineTest, NamedMusicStartsTheLibraryThenOpensItsResource) {
    std::unique_ptr<engine::FmodEngine> music;
    EXPECT_EQ(
        EffectsOf([&] { music = std::make_unique<engine::FmodEngine>("synchtune"); }),
        startLines + Lines({R"(print "BasicInit - Completed\nAttempting to load file...")"}) +
            doubles::LookupLines("synchtune", "mp3") +
            Lines({
                R"(FMOD::System::createSound("/resources/synchtune.mp3", FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D, null))",
                R"(print "OK\n")",
            }));
}

TEST_F(FmodEngineTest, UnnamedMusicOpensMusicWithoutMessages) {
    std::unique_ptr<engine::FmodEngine> music;
    EXPECT_EQ(
        EffectsOf([&] { music = std::make_unique<engine::FmodEngine>(); }),
        startLines + Lines({R"(print "BasicInit - Completed\n")"}) +
            doubles::LookupLines("music", "mp3") +
            Lines(
                {R"(FMOD::System::createSound("/resources/music.mp3", FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D, null))"}));
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

TEST_F(FmodEngineTest, OlderVersionGivesAWarningAndStartsAllTheSame) {
    doubles::fmod.version = 0x00040305;
    EXPECT_THAT(EffectsOf([] { engine::FmodEngine music; }),
                testing::HasSubstr(Lines({
                    R"(FMOD::System::getVersion())",
                    R"(print "Error!  You are using an old version of FMOD 00040305.  )"
                    R"(This program requires 00040306\n")",
                    R"(FMOD::System::init(1, 0, null))",
                })));
}

TEST_F(FmodEngineTest, EndReleasesTheSoundThenClosesAndReleasesTheSystem) {
    auto music = Make();
    EXPECT_EQ(EffectsOf([&] { music.reset(); }), endLines);
}

TEST_F(FmodEngineTest, CheckErrorPassesOverSuccess) {
    const auto music = Make();
    EXPECT_EQ(EffectsOf([&] { music->FmodCheckError(FMOD_OK); }), "");
}

TEST_F(FmodEngineTest, CheckErrorPrintsCodeAndTextAndEndsWith255) {
    auto music = Make();
    const std::map<int, std::string> texts = {
        {1, "(1) Tried to call lock a second time before unlock was called. "},
        {22, "(22) File not found. "},
        {68, "(68) The version number of this file format is not supported. "},
        {69, "(69) Unknown error."}, // outside its table, as the next
        {-1, "(-1) Unknown error."},
    };
    for (const auto& [code, text] : texts) {
        EXPECT_EXIT(Check(*music, code), ExitedWithCode(255),
                    Eq(Lines({R"(print "FMOD error! )" + text + R"(\n")"})));
    }
}

TEST_F(FmodEngineTest, AnyRefusalAtTheStartEndsTheProcessThere) {
    const struct {
        const char* operation;
        int result;
        const char* told;
    } refusals[] = {
        {"FMOD::System_Create", 37, "(37) Not enough memory or resources. "},
        {"FMOD::System::getVersion", 34, "(34) An invalid parameter was passed to this function. "},
        {"FMOD::System::init", 52, "(52) Error initializing output device. "},
    };
    for (const auto& [operation, result, told] : refusals) {
        doubles::fmod.results = {{operation, static_cast<FMOD_RESULT>(result)}};
        EXPECT_EXIT(MakeNamed(), ExitedWithCode(255),
                    Eq(UpTo(operation, startLines) +
                       Lines({R"(print "FMOD error! )" + std::string(told) + R"(\n")"})));
    }
}

TEST_F(FmodEngineTest, MissingMusicEndsTheProcessOnTheLineOfTheAttempt) {
    doubles::bundle.paths.clear();
    EXPECT_EXIT(
        MakeNamed(), ExitedWithCode(255),
        Eq(startLines +
           Lines({
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
    const auto told =
        testing::EndsWith("print \"FMOD error! (24) Unsupported file or audio format. \\n\"\n");
    EXPECT_EXIT(MakeNamed(), ExitedWithCode(255), told);
    EXPECT_EXIT(MakeUnnamed(), ExitedWithCode(255), told);
}

TEST_F(FmodEngineTest, AnyRefusalAtTheEndEndsTheProcessThere) {
    auto music = Make();
    for (const std::string operation :
         {"FMOD::Sound::release", "FMOD::System::close", "FMOD::System::release"}) {
        const auto refuse = [&] {
            doubles::fmod.results[operation] = FMOD_ERR_INVALID_HANDLE;
            doubles::ReportEffectsAtExit([&] { music.reset(); });
        };
        EXPECT_EXIT(
            refuse(), ExitedWithCode(255),
            Eq(UpTo(operation, endLines) +
               Lines({R"(print "FMOD error! (33) An invalid object handle was used. \n")"})));
    }
}

} // namespace
