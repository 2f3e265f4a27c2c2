// Plays music with the sound library and nothing else, as the benchmark asks.
//   player poll|pause MUSIC LOGS [SINKLOG]   asks every millisecond, and notes the answers
//   player show|play|call MUSIC              see below
// With SINKLOG the music is begun only when the log shows what this player plays.
#include "Answers.h"
#include "Clock.h"
#include "Music.h"
#include "Objects.h"

#include <FMOD/FMOD.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <unistd.h>

using bench::Answer;

static constexpr int bands = 512;

static void Check(FMOD_RESULT result) {
    if (result != FMOD_OK) {
        std::fprintf(stderr, "the sound library answers %d\n", static_cast<int>(result));
        std::exit(1);
    }
}

namespace {

struct Playing {
    explicit Playing(const char* path, const char* sinkLog = nullptr) {
        Check(FMOD::System_Create(&system));
        Check(system->init(1, FMOD_INIT_NORMAL, nullptr));
        if (sinkLog != nullptr) {
            Await(sinkLog);
        }
        FMOD::Sound* sound = nullptr;
        Check(system->createSound(path, FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM, nullptr,
                                  &sound));
        Check(system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel));
    }
    Playing(const Playing&) = delete;
    Playing& operator=(const Playing&) = delete;
    ~Playing() { system->release(); }

    // Until something is in it, at most five seconds.
    static void Await(const std::filesystem::path& sinkLog) {
        std::error_code error;
        for (int ms = 0; ms < 5000; ++ms) {
            if (const auto size = std::filesystem::file_size(sinkLog, error); !error && size > 0) {
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    bool GoesOn() const {
        bool playing = false;
        Check(channel->isPlaying(&playing));
        return playing;
    }

    void ReadSpectrum() {
        Check(system->getSpectrum(spectrum.data(), bands, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE));
    }

    FMOD::System* system = nullptr;
    FMOD::Channel* channel = nullptr;
    std::array<float, bands> spectrum;
};

// Notes what the library answers, and which samples it analyses.
class Watch {
public:
    Watch(Playing& watched, const bench::Music& played) : playing(watched), music(played) {}

    void AskPositions() {
        auto& channel = sound::ChannelObject::Of(*playing.channel);
        const std::int64_t before = sound::MonotonicNs();
        const std::int64_t musicFrame = channel.Heard().musicFrame;
        const std::int64_t between = sound::MonotonicNs();
        unsigned int ms = 0;
        Check(playing.channel->getPosition(&ms, FMOD_TIMEUNIT_MS));
        const std::int64_t after = sound::MonotonicNs();
        heardFrame = musicFrame;
        playHead.push_back({before + (between - before) / 2,
                            static_cast<double>(musicFrame) * 1000.0 / bench::rateHz});
        position.push_back({between + (after - between) / 2, static_cast<double>(ms)});
    }

    void AskSpectrum() {
        const std::int64_t before = sound::MonotonicNs();
        playing.ReadSpectrum();
        const std::int64_t after = sound::MonotonicNs();
        const std::int64_t end = EndOfAnalysed();
        if (end >= 0) {
            spectrum.push_back(
                {before + (after - before) / 2, static_cast<double>(end) * 1000.0 / bench::rateHz});
        }
    }

    void Write(const std::string& prefix) const {
        bench::WriteAnswers(prefix + ".playhead", playHead);
        bench::WriteAnswers(prefix + ".position", position);
        bench::WriteAnswers(prefix + ".spectrum", spectrum);
    }

private:
    // Found by what the samples are, near what is heard, so that the answer owes nothing to how the
    // library came by them; -1 while they are not all music.
    std::int64_t EndOfAnalysed() const {
        constexpr std::int64_t count = std::int64_t{2} * bands;
        constexpr std::int64_t reach = 4410;
        const float* samples = sound::SystemObject::Of(*playing.system).spectrum.SamplesFor(bands);
        const auto frames = music.Frames();
        const std::int64_t last = std::min(heardFrame + reach, std::ssize(frames));
        for (std::int64_t end = std::max(heardFrame - reach, count); end <= last; ++end) {
            const auto begin = frames.begin() + (end - count);
            if (std::equal(begin, begin + count, samples, [](bench::Frame frame, float sample) {
                    return std::fabs(frame.left - sample) < 1e-4F;
                })) {
                return end;
            }
        }
        return -1;
    }

    Playing& playing;
    const bench::Music& music;
    std::int64_t heardFrame = 0;
    std::vector<Answer> playHead;
    std::vector<Answer> position;
    std::vector<Answer> spectrum;
};

} // namespace

static void Poll(const char* path, const std::string& logPrefix, const char* sinkLog, bool pauses) {
    const bench::Music music(path);
    Playing playing(path, sinkLog);
    Watch watch(playing, music);
    bench::Millisecond millisecond;
    for (int ms = 0; playing.GoesOn(); ++ms) {
        if (pauses && (ms % 1500 == 1100 || ms % 1500 == 1400)) {
            Check(playing.channel->setPaused(ms % 1500 == 1100));
        }
        watch.AskPositions();
        if (!pauses && ms % 25 == 0) {
            watch.AskSpectrum();
        }
        millisecond.Wait();
    }
    watch.Write(logPrefix);
}

// As often as the show asks.
static void PlayAsShow(const char* path) {
    Playing playing(path);
    unsigned int ms = 0;
    while (playing.GoesOn()) {
        Check(playing.system->update());
        Check(playing.channel->getPosition(&ms, FMOD_TIMEUNIT_MS));
        playing.ReadSpectrum();
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
}

static void PlayOnly(const char* path) {
    Playing playing(path);
    while (playing.GoesOn()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
    }
}

// For a tracer of system calls: 1000 calls of each operation, a write to nowhere before and after.
static void Call(const char* path) {
    Playing playing(path);
    const auto mark = [](std::string_view name) {
        if (write(-1, name.data(), name.size()) >= 0) {
            std::exit(1);
        }
    };
    unsigned int ms = 0;
    playing.ReadSpectrum();
    mark("update");
    for (int i = 0; i < 1000; ++i) {
        Check(playing.system->update());
    }
    mark("getPosition");
    for (int i = 0; i < 1000; ++i) {
        Check(playing.channel->getPosition(&ms, FMOD_TIMEUNIT_MS));
    }
    mark("getSpectrum");
    for (int i = 0; i < 1000; ++i) {
        playing.ReadSpectrum();
    }
    mark("end");
}

int main(int argc, char** argv) {
    const std::string_view mode = argc > 2 ? argv[1] : "";
    if ((mode == "poll" || mode == "pause") && (argc == 4 || argc == 5)) {
        Poll(argv[2], argv[3], argc == 5 ? argv[4] : nullptr, mode == "pause");
    } else if (mode == "show") {
        PlayAsShow(argv[2]);
    } else if (mode == "play") {
        PlayOnly(argv[2]);
    } else if (mode == "call") {
        Call(argv[2]);
    } else {
        std::fputs("usage: player poll|pause MUSIC LOGS [SINKLOG]\n"
                   "       player show|play|call MUSIC\n",
                   stderr);
        return 2;
    }
    return 0;
}
