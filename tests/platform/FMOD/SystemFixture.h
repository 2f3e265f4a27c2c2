// A system whose output does what the test says, and files to play on it.
#pragma once

#include "Mp3Files.h"
#include "ReadScript.h"
#include "ScriptedOutput.h"

#include <FMOD/FMOD.h>

#include <gtest/gtest.h>

#include <string>

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

    files::Folder folder;
    FMOD::System* system = nullptr;
};
