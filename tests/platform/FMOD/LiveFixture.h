// The whole library as the show has it, seen and timed as by the show's main thread.
#pragma once

#include "Mp3Files.h"
#include "PrivateServer.h"

#include <FMOD/FMOD.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

inline constexpr const char* silentNotice = "skovra: no sound device, playing silently\n";

/// What a viewer sees of a sound for a while.
struct Course {
    unsigned int firstPosition = 0;
    unsigned int lastPosition = 0;
    unsigned int differentPositions = 0;
    bool everBack = false;
    double leapMs = 0.0;    ///< by how much it ever moved further, between two looks, than time did
    double behindMs = 0.0;  ///< by how much it moved less than time did, in all
    float strongest = 0.0F; ///< of all spectra
};

class LiveFixture : public testing::Test {
protected:
    LiveFixture() { HideSoundSystems(); }

    /// Releases the system, if the test has not.
    void TearDown() override;

    /// Plays the first @p seconds of the sweep: Open and Play, in two steps or in one.
    void Open(double seconds);
    void Play();
    void OpenAndPlay(double seconds);

    /// Looks every few milliseconds until @p untilMs is reached or the sound is over. With
    /// @p server, which is recording, for ExpectInStep later.
    Course Watch(unsigned int untilMs, const PrivateServer* server = nullptr);

    unsigned int Position();
    void Release();

    /// The music went on in real time; it may have halted while a device's loss was noticed.
    void ExpectRealTime(const std::string& when, const Course& course);

    /// Of the music from @p fromMs to @p toMs, what the server recorded was what was heard when it
    /// was played.
    void ExpectInStep(const std::string& when, const std::vector<float>& recorded,
                      unsigned int fromMs, unsigned int toMs);

    files::Folder folder;

private:
    using Clock = std::chrono::steady_clock;

    struct Look {
        std::size_t recordedFrames;
        unsigned int positionMs;
    };

    // Times a call of the library, which is to succeed.
    template <typename Call>
    void Timed(Call call) {
        const auto begin = Clock::now();
        EXPECT_EQ(call(), FMOD_OK);
        longestCall = std::max<Clock::duration>(longestCall, Clock::now() - begin);
    }

    FMOD::System* system = nullptr;
    FMOD::Sound* sound = nullptr;
    FMOD::Channel* channel = nullptr;
    std::vector<Look> looks;
    Clock::duration longestCall{0};
};
