// A system with a scripted output, and files to play on it.
#pragma once

#include "File.h"
#include "Mp3Decoder.h"
#include "Mp3Files.h"
#include "ReadScript.h"
#include "ScriptedOutput.h"
#include "Tone.h"

#include <FMOD/FMOD.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

inline constexpr FMOD_MODE streamed = FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM;

class SystemFixture : public testing::Test {
protected:
    SystemFixture() {
        script::Reset();
        reads::Reset();
        EXPECT_EQ(FMOD::System_Create(&system), FMOD_OK);
    }

    ~SystemFixture() override {
        reads::Reset();
        system->release();
    }

    void Init() { ASSERT_EQ(system->init(2, FMOD_INIT_NORMAL, nullptr), FMOD_OK); }

    // A file of a sine on both sides, at half scale.
    std::string Encoded(double hz = 441.0, std::size_t frames = 44100, int rateHz = 44100) {
        std::string path = folder.Path("tone.mp3");
        files::EncodeMp3(path, tone::Sine(rateHz, hz, hz, 0.5, frames), rateHz);
        return path;
    }

    // All that can be read of a file.
    static std::vector<float> Decoded(const std::string& path) {
        std::unique_ptr<sound::File> file;
        std::unique_ptr<sound::Mp3Decoder> decoder;
        EXPECT_EQ(sound::File::Open(path.c_str(), file), FMOD_OK);
        EXPECT_EQ(sound::Mp3Decoder::Open(std::move(file), decoder), FMOD_OK);
        std::vector<float> all;
        std::span<const float> frames;
        while (decoder->Decode(frames) == sound::Mp3Decoder::Progress::Frames) {
            all.insert(all.end(), frames.begin(), frames.end());
        }
        return all;
    }

    // What opening a file answers; a sound is made if it succeeds, and else left alone.
    FMOD_RESULT Create(const std::string& path) {
        int place = 0;
        auto* const before = reinterpret_cast<FMOD::Sound*>(&place);
        FMOD::Sound* sound = before;
        const FMOD_RESULT result = system->createSound(path.c_str(), streamed, nullptr, &sound);
        EXPECT_EQ(sound != before, result == FMOD_OK);
        return result;
    }

    FMOD::Sound* Open(const std::string& path) {
        FMOD::Sound* sound = nullptr;
        EXPECT_EQ(system->createSound(path.c_str(), streamed, nullptr, &sound), FMOD_OK);
        return sound;
    }

    FMOD::Channel* Play(FMOD::Sound* sound, bool paused = false) {
        FMOD::Channel* channel = nullptr;
        EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, paused, &channel), FMOD_OK);
        return channel;
    }

    static unsigned int Position(FMOD::Channel* channel) {
        unsigned int position = 0;
        EXPECT_EQ(channel->getPosition(&position, FMOD_TIMEUNIT_MS), FMOD_OK);
        return position;
    }

    static bool IsPlaying(FMOD::Channel* channel) {
        bool playing = false;
        EXPECT_EQ(channel->isPlaying(&playing), FMOD_OK);
        return playing;
    }

    // What one sine of 441 Hz at half scale does from one sample to the next is 0.0314.
    static void ExpectNoClick(const std::vector<float>& frames) {
        EXPECT_LT(tone::LargestStep(tone::Side(frames, 0)), 2.0F * 0.0315F);
        EXPECT_LT(tone::LargestStep(tone::Side(frames, 1)), 2.0F * 0.0315F);
    }

    files::Folder folder;
    FMOD::System* system = nullptr;
};
