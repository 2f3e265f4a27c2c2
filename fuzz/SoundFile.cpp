// Any bytes as music: opened and played, begun again and played to the end, or refused.
#include "Expect.h"
#include "MemoryFile.h"
#include "ScriptedOutput.h"

#include <FMOD/FMOD.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

static constexpr unsigned int pulledFrames = 4410;
static constexpr unsigned int beginningFrames = 2 * pulledFrames;
static constexpr unsigned int longestFrames = 100 * pulledFrames; // of a file of any length

// To the end of the sound, or as long as @p frames frames.
static void Play(FMOD::System& system, FMOD::Sound* sound, unsigned int frames) {
    FMOD::Channel* channel = nullptr;
    EXPECT(system.playSound(FMOD_CHANNEL_FREE, sound, false, &channel) == FMOD_OK);
    unsigned int before = 0;
    bool playing = true;
    for (unsigned int pulled = 0; playing && pulled < frames;) {
        const std::vector<float> mix = script::Pull(static_cast<int>(pulledFrames));
        pulled += pulledFrames;
        EXPECT(std::all_of(mix.begin(), mix.end(),
                           [](float sample) { return sample >= -1.0F && sample <= 1.0F; }));
        script::HearAll();
        unsigned int position = 0;
        EXPECT(channel->getPosition(&position, FMOD_TIMEUNIT_MS) == FMOD_OK);
        EXPECT(position >= before && position <= pulled * 10 / 441 + 1);
        EXPECT(channel->isPlaying(&playing) == FMOD_OK);
        before = position;
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    script::Reset();
    const fuzz::MemoryFile file(bytes, size);
    FMOD::System* system = nullptr;
    FMOD::Sound* sound = nullptr;
    EXPECT(FMOD::System_Create(&system) == FMOD_OK);
    EXPECT(system->init(1, FMOD_INIT_NORMAL, nullptr) == FMOD_OK);
    const FMOD_RESULT opened = system->createSound(
        file.Path(), FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM, nullptr, &sound);
    EXPECT(opened == FMOD_OK || opened == FMOD_ERR_FORMAT);
    if (opened == FMOD_OK) {
        Play(*system, sound, beginningFrames);
        // What is heard is not compared: libmpg123 does not always make the same of damage.
        Play(*system, sound, longestFrames);
    }
    EXPECT(system->release() == FMOD_OK);
    return 0;
}
