// The program of the measured page: plays /music.mp3 and says what is heard of it.
#include "Objects.h"

#include <cstdio>
#include <cstdlib>

#include <emscripten.h>

static FMOD::System* library = nullptr;
static FMOD::Sound* music = nullptr;
static FMOD::Channel* channel = nullptr;

static void Check(FMOD_RESULT result) {
    if (result != FMOD_OK) {
        std::fprintf(stderr, "sound library: error %d\n", static_cast<int>(result));
        std::abort();
    }
}

extern "C" {

EMSCRIPTEN_KEEPALIVE void BenchPlay() {
    Check(library->playSound(FMOD_CHANNEL_FREE, music, false, &channel));
}

/// The position before it is rounded to whole milliseconds.
EMSCRIPTEN_KEEPALIVE double BenchPositionMs() {
    const auto frame = sound::ChannelObject::Of(*channel).Heard().musicFrame;
    return static_cast<double>(frame) * 1000.0 / static_cast<double>(sound::outputRateHz);
}
}

int main() {
    Check(FMOD::System_Create(&library));
    Check(library->init(32, FMOD_INIT_NORMAL, nullptr));
    Check(library->createSound("/music.mp3", FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM, nullptr,
                               &music));
    emscripten_exit_with_live_runtime();
}
