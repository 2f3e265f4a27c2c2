// Plays music with SDL2_mixer, and notes the position it answers: sdl-player MUSIC [LOG]
#include "Answers.h"
#include "Clock.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 2 || SDL_Init(SDL_INIT_AUDIO) != 0 ||
        Mix_OpenAudio(44100, AUDIO_F32SYS, 2, 2048) != 0) {
        std::fprintf(stderr, "usage: sdl-player MUSIC [LOG]; %s\n", SDL_GetError());
        return 2;
    }
    Mix_Music* music = Mix_LoadMUS(argv[1]);
    if (music == nullptr || Mix_PlayMusic(music, 0) != 0) {
        std::fprintf(stderr, "%s: %s\n", argv[1], Mix_GetError());
        return 1;
    }
    std::vector<bench::Answer> answers;
    bench::Millisecond millisecond;
    while (Mix_PlayingMusic() != 0) {
        if (argc > 2) {
            const std::int64_t before = sound::MonotonicNs();
            const double seconds = Mix_GetMusicPosition(music);
            const std::int64_t after = sound::MonotonicNs();
            answers.push_back({before + (after - before) / 2, seconds * 1000.0});
            millisecond.Wait();
        } else {
            SDL_Delay(250);
        }
    }
    if (argc > 2) {
        bench::WriteAnswers(argv[2], answers);
    }
    Mix_FreeMusic(music);
    Mix_CloseAudio();
    SDL_Quit();
    return 0;
}
