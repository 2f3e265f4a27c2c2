// The whole library as the show uses it, observed and timed from the main thread.
#pragma once

#include "Mp3Files.h"
#include "PrivateServer.h"

#include <FMOD/FMOD.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

inline const std::string silentNotice =
    std::string(program_invocation_short_name) + ": no sound device, playing silently\n";

/// What was observed of a sound over a period.
struct Observation {
    unsigned int firstPosition = 0;
    unsigned int lastPosition = 0;
    unsigned int differentPositions = 0;
    bool wentBack = false;
    double leapMs = 0.0;    ///< the most by which it advanced more than real time between two looks
    double behindMs = 0.0;  ///< by how much it advanced less than real time, in total
    float strongest = 0.0F; ///< of all spectra
};

class LiveFixture : public testing::Test {
protected:
    LiveFixture() { HideSoundSystems(); }

    /// Releases the system, if the test has not.
    void TearDown() override;

    /// Play the first @p seconds of the sweep, in two steps or in one.
    void Open(double seconds);
    void Play();
    void OpenAndPlay(double seconds);

    /// Observes every few milliseconds until @p untilMs is reached or the sound is over. With
    /// @p server, which is recording, also for ExpectInStep later.
    Observation Watch(unsigned int untilMs, const PrivateServer* server = nullptr);

    unsigned int Position();
    void Release();

    /// The music continued in real time; it may have halted until a lost device was noticed.
    void ExpectRealTime(const std::string& when, const Observation& observed);

    /// From @p fromMs to @p toMs of the music, the observed positions match what @p server
    /// recorded. Ends the recording, and returns it.
    std::vector<float> ExpectInStep(const std::string& when, PrivateServer& server,
                                    unsigned int fromMs, unsigned int toMs);

    /// Observes until the music is over, at @p lengthMs: the sound resumed after @p backMs.
    void ExpectHeardAgain(PrivateServer& server, unsigned int backMs, unsigned int lengthMs);

    /// The music is @p recorded from its first frame on without a gap.
    static void ExpectWholeBeginning(const std::vector<float>& recorded);

    files::Folder folder;

private:
    using Clock = std::chrono::steady_clock;

    struct Look {
        std::size_t recordedFrames;
        unsigned int positionMs;
    };

    // Times a call of the library, which must succeed.
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

/// The same on each kind of server, which records from the start.
class LiveServerFixture : public LiveFixture, public testing::WithParamInterface<ServerKind> {
protected:
    void SetUp() override {
        ASSERT_TRUE(server->IsRunning());
        server->BeginRecording(); // which also keeps the sink awake
    }

    const std::unique_ptr<PrivateServer> server = GetParam().run();
};
