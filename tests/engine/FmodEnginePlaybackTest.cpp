// The music while it plays: position, spectrum, controls; and before it does.
#include "FmodEngine.h"

#include "Effects.h"
#include "Fixture.h"
#include "Fmod.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;
using testing::Eq;
using testing::ExitedWithCode;

constexpr char invalidHandle[] =
    R"(print "FMOD error! (33) An invalid object handle was used. \n")";
constexpr char invalidParameter[] =
    R"(print "FMOD error! (34) An invalid parameter was passed to this function. \n")";

class FmodEnginePlaybackTest : public doubles::Fixture {
protected:
    FmodEnginePlaybackTest() {
        EffectsOf([this] { music = std::make_unique<engine::FmodEngine>("synchtune"); });
    }

    void Play() {
        EffectsOf([this] { music->Play(); });
    }

    /// Makes @p operation answer "invalid parameter" from now on.
    static void Refuse(const std::string& operation) {
        doubles::fmod.results[operation] = FMOD_ERR_INVALID_PARAM;
    }

    /// For death tests: does @p action until the process ends.
    static void UntilExit(const std::function<void()>& action) {
        doubles::ReportEffectsAtExit(action);
    }

    std::unique_ptr<engine::FmodEngine> music;
};

TEST_F(FmodEnginePlaybackTest, PlayStartsTheSoundAtOnceAndIgnoresARefusedUpdate) {
    Refuse("FMOD::System::update");
    EXPECT_EQ(EffectsOf([this] { music->Play(); }),
              Lines({
                  "FMOD::System::playSound(FMOD_CHANNEL_FREE, sound, false)",
                  "FMOD::System::update()",
              }));
    EXPECT_NE(music->channel, nullptr);
    EXPECT_FALSE(music->stopped);
}

TEST_F(FmodEnginePlaybackTest, UpdateIsOneCallAndIgnoresARefusal) {
    Refuse("FMOD::System::update");
    EXPECT_EQ(EffectsOf([this] { music->Update(); }), Lines({"FMOD::System::update()"}));
}

TEST_F(FmodEnginePlaybackTest, UpdateSpectrumReads512BandsOfTheLeftChannelWithATriangleWindow) {
    doubles::fmod.spectra.front()[0] = 0.25F;
    doubles::fmod.spectra.front()[511] = 0.75F;
    EXPECT_EQ(EffectsOf([this] { music->UpdateSpectrum(); }),
              Lines({"FMOD::System::getSpectrum(512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE)"}));
    EXPECT_EQ(music->spectrum[0], 0.25F);
    EXPECT_EQ(music->spectrum[511], 0.75F);
}

TEST_F(FmodEnginePlaybackTest, RefusedSpectrumLeavesTheBandsAsTheyWere) {
    music->spectrum[7] = 0.5F;
    Refuse("FMOD::System::getSpectrum");
    EffectsOf([this] { music->UpdateSpectrum(); });
    EXPECT_EQ(music->spectrum[7], 0.5F);
}

TEST_F(FmodEnginePlaybackTest, AverageOfNoRangeIsZeroWhateverTheBandsHold) {
    for (float& band : music->spectrum) {
        band = 1.0F;
    }
    EXPECT_EQ(music->GetAverage(5, 5), 0.0F);
    EXPECT_EQ(music->GetAverage(9, 8), 0.0F);
    EXPECT_EQ(music->GetAverage(100000, 1), 0.0F); // reads no band
}

TEST_F(FmodEnginePlaybackTest, AverageSumsBothEndsAndDividesByOneLess) {
    music->spectrum[0] = 0.25F;
    music->spectrum[1] = 0.5F;
    music->spectrum[2] = 1.0F;
    music->spectrum[3] = 100.0F;
    EXPECT_EQ(music->GetAverage(0, 1), 0.75F);
    EXPECT_EQ(music->GetAverage(1, 2), 1.5F);
    EXPECT_EQ(music->GetAverage(0, 2), 0.875F);
}

TEST_F(FmodEnginePlaybackTest, AverageOfAllBandsDividesBy511) {
    for (float& band : music->spectrum) {
        band = 1.0F;
    }
    EXPECT_EQ(music->GetAverage(0, 511), 512.0F / 511.0F);
}

TEST_F(FmodEnginePlaybackTest, AverageAddsUpwardsInSinglePrecision) {
    music->spectrum[20] = 1.0F;
    music->spectrum[21] = 16777216.0F; // swallows a 1 added before or after it
    music->spectrum[22] = 1.0F;
    music->spectrum[23] = -16777216.0F;
    music->spectrum[24] = 0.5F;
    EXPECT_EQ(music->GetAverage(20, 24), 0.5F / 4.0F);
}

TEST_F(FmodEnginePlaybackTest, IndexDividesByTheWidthOfABandTowardsZero) {
    EXPECT_EQ(music->GetIndex(0), 0);
    EXPECT_EQ(music->GetIndex(42), 0);
    EXPECT_EQ(music->GetIndex(43), 1);
    EXPECT_EQ(music->GetIndex(86), 2);
    EXPECT_EQ(music->GetIndex(100), 2);
    EXPECT_EQ(music->GetIndex(22050), 512);
    EXPECT_EQ(music->GetIndex(-50), -1);
}

TEST_F(FmodEnginePlaybackTest, CurTimeAsksTheLibraryEveryTime) {
    Play();
    doubles::fmod.positions = {12, 4000000000U};
    EXPECT_EQ(music->GetCurTime(), 12U);
    EXPECT_EQ(music->GetCurTime(), 4000000000U);
    EXPECT_EQ(music->position, 4000000000U);
    EXPECT_EQ(EffectsOf([this] { music->GetCurTime(); }),
              Lines({"FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)"}));
}

TEST_F(FmodEnginePlaybackTest, CurTimeKeepsTheLastResult) {
    Play();
    music->lastResult = FMOD_ERR_MEMORY;
    music->GetCurTime();
    EXPECT_EQ(music->lastResult, FMOD_OK);
}

TEST_F(FmodEnginePlaybackTest, RefusedPositionIsKeptAndEndsTheProcess) {
    Play();
    static const engine::FmodEngine* observed;
    observed = music.get();
    Refuse("FMOD::Channel::getPosition");
    const auto ask = [this] {
        std::atexit(
            [] { doubles::RecordLine("lastResult " + doubles::Text(observed->lastResult)); });
        music->GetCurTime();
    };
    EXPECT_EXIT(UntilExit(ask), ExitedWithCode(255),
                Eq(Lines({
                    "FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)",
                    invalidParameter,
                    "lastResult 34",
                })));
}

TEST_F(FmodEnginePlaybackTest, IsPlayingTracesTheAnswerAsADigit) {
    Play();
    for (const bool playing : {true, false}) {
        doubles::fmod.playing = playing;
        EXPECT_EQ(EffectsOf([&] { EXPECT_EQ(music->GetIsPlaying(), playing); }),
                  Lines({"FMOD::Channel::isPlaying()", playing ? R"(print "1")" : R"(print "0")"}));
    }
}

TEST_F(FmodEnginePlaybackTest, IsPlayingWithoutAChannelSaysSoInMacRomanEveryTime) {
    bool playing = true;
    const std::string printed = doubles::OutputOf([&] {
        playing = music->GetIsPlaying();
        music->GetIsPlaying();
    });
    EXPECT_FALSE(playing);
    EXPECT_EQ(printed, "D\xBF"
                       "den er n\xBEr\n"
                       "D\xBF"
                       "den er n\xBEr\n");
}

TEST_F(FmodEnginePlaybackTest, MuteIsReadFromTheLibrary) {
    Play();
    doubles::fmod.mute = true;
    EXPECT_EQ(EffectsOf([this] { EXPECT_TRUE(music->GetMute()); }),
              Lines({"FMOD::Channel::getMute()"}));
    EXPECT_TRUE(music->mute);
}

TEST_F(FmodEnginePlaybackTest, SetMuteAppliesThePresentStateAgain) {
    Play();
    EXPECT_EQ(EffectsOf([this] { music->SetMute(); }),
              Lines({"FMOD::Channel::getMute()", "FMOD::Channel::setMute(false)"}));
    doubles::fmod.mute = true;
    EXPECT_EQ(EffectsOf([this] { music->SetMute(); }),
              Lines({"FMOD::Channel::getMute()", "FMOD::Channel::setMute(true)"}));
}

TEST_F(FmodEnginePlaybackTest, SetPausedTogglesTheStateThatItReadsAndKeeps) {
    Play();
    EXPECT_EQ(EffectsOf([this] { music->SetPaused(); }),
              Lines({"FMOD::Channel::getPaused()", "FMOD::Channel::setPaused(true)"}));
    EXPECT_FALSE(music->paused);
    EXPECT_EQ(EffectsOf([this] { music->SetPaused(); }),
              Lines({"FMOD::Channel::getPaused()", "FMOD::Channel::setPaused(false)"}));
    EXPECT_TRUE(music->paused);
}

TEST_F(FmodEnginePlaybackTest, SetPausedIgnoresRefusals) {
    Play();
    Refuse("FMOD::Channel::getPaused");
    Refuse("FMOD::Channel::setPaused");
    music->paused = true;
    EXPECT_EQ(EffectsOf([this] { music->SetPaused(); }),
              Lines({"FMOD::Channel::getPaused()", "FMOD::Channel::setPaused(false)"}));
}

TEST_F(FmodEnginePlaybackTest, VolumeIsHandedOverAsAShareOf255) {
    Play();
    EXPECT_EQ(EffectsOf([this] { music->SetVolume(255.0F); }),
              Lines({"FMOD::Channel::setVolume(1)"}));
    EXPECT_EQ(music->volume, 255.0F);
    EXPECT_EQ(EffectsOf([this] { music->SetVolume(0.0F); }),
              Lines({"FMOD::Channel::setVolume(0)"}));
    EXPECT_EQ(music->volume, 0.0F);
    EXPECT_EQ(EffectsOf([this] { music->SetVolume(175.0F); }),
              Lines({"FMOD::Channel::setVolume(" + doubles::Text(175.0F / 255.0F) + ")"}));
}

TEST_F(FmodEnginePlaybackTest, SetVolumeIgnoresARefusal) {
    Play();
    Refuse("FMOD::Channel::setVolume");
    EffectsOf([this] { music->SetVolume(51.0F); });
    EXPECT_EQ(music->volume, 51.0F);
}

TEST_F(FmodEnginePlaybackTest, PlayDoesNotApplyAVolumeSetBefore) {
    EXPECT_EQ(EffectsOf([this] { music->SetVolume(175.0F); }), "");
    EXPECT_EQ(music->volume, 175.0F);
    EXPECT_EQ(doubles::Count("FMOD::Channel::setVolume", EffectsOf([this] { music->Play(); })), 0);
}

TEST_F(FmodEnginePlaybackTest, PauseBeforePlayDoesNothing) {
    EXPECT_EQ(EffectsOf([this] { music->SetPaused(); }), "");
}

TEST_F(FmodEnginePlaybackTest, PositionAndMuteBeforePlayEndTheProcess) {
    EXPECT_EXIT(UntilExit([this] { music->GetCurTime(); }), ExitedWithCode(255),
                Eq(Lines({invalidHandle})));
    EXPECT_EXIT(UntilExit([this] { music->GetMute(); }), ExitedWithCode(255),
                Eq(Lines({invalidHandle})));
    EXPECT_EXIT(UntilExit([this] { music->SetMute(); }), ExitedWithCode(255),
                Eq(Lines({invalidHandle})));
}

TEST_F(FmodEnginePlaybackTest, RefusalsOfPlayPlayingAndMuteEndTheProcess) {
    Play();
    const struct {
        const char* operation;
        std::function<void()> action;
        std::string calls;
    } refusals[] = {
        {"FMOD::System::playSound", [this] { music->Play(); },
         Lines({"FMOD::System::playSound(FMOD_CHANNEL_FREE, sound, false)"})},
        {"FMOD::Channel::isPlaying", [this] { music->GetIsPlaying(); },
         Lines({"FMOD::Channel::isPlaying()"})},
        {"FMOD::Channel::getMute", [this] { music->GetMute(); },
         Lines({"FMOD::Channel::getMute()"})},
        {"FMOD::Channel::setMute", [this] { music->SetMute(); },
         Lines({"FMOD::Channel::getMute()", "FMOD::Channel::setMute(false)"})},
    };
    for (const auto& [operation, action, calls] : refusals) {
        doubles::fmod.results.clear();
        Refuse(operation);
        EXPECT_EXIT(UntilExit(action), ExitedWithCode(255), Eq(calls + Lines({invalidParameter})));
    }
}

} // namespace
