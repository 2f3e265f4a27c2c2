// Times single operations of the sound library, as medians of interleaved runs.
//   micro opening SHORT LONG   createSound: ms and bytes read, of two files
//   micro spectrum MUSIC       getSpectrum, and its window and transform alone
// Prints one line of NAME=VALUE pairs.
#include "Clock.h"

#include <FMOD/FMOD.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <kiss_fftr.h>

static constexpr int bands = 512;

static void Check(FMOD_RESULT result) {
    if (result != FMOD_OK) {
        std::fprintf(stderr, "the sound library answers %d\n", static_cast<int>(result));
        std::exit(1);
    }
}

static double Median(std::vector<double> values) {
    const auto middle = values.begin() + std::ssize(values) / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// What this thread has read so far; the library's decode thread is another.
static double BytesRead() {
    std::ifstream file("/proc/thread-self/io");
    std::string name;
    double value = 0.0;
    file >> name >> value;
    return value;
}

static FMOD::System* Begin() {
    FMOD::System* system = nullptr;
    Check(FMOD::System_Create(&system));
    Check(system->init(1, FMOD_INIT_NORMAL, nullptr));
    return system;
}

static FMOD::Sound* Open(FMOD::System& system, const char* path) {
    FMOD::Sound* sound = nullptr;
    Check(system.createSound(path, FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM, nullptr, &sound));
    return sound;
}

namespace {

struct Opening {
    std::vector<double> ms;
    std::vector<double> bytes;

    void Measure(FMOD::System& system, const char* path) {
        const double earlier = BytesRead();
        const double bytesBefore = BytesRead(); // the difference is what looking reads
        const std::int64_t before = sound::MonotonicNs();
        FMOD::Sound* sound = Open(system, path);
        const std::int64_t after = sound::MonotonicNs();
        bytes.push_back(BytesRead() - bytesBefore - (bytesBefore - earlier));
        ms.push_back(static_cast<double>(after - before) / 1e6);
        Check(sound->release());
    }
};

} // namespace

static void TimeOpening(const char* shortPath, const char* longPath) {
    FMOD::System* system = Begin();
    Opening ofShort;
    Opening ofLong;
    for (int i = 0; i < 300; ++i) {
        ofShort.Measure(*system, shortPath);
        ofLong.Measure(*system, longPath);
    }
    Check(system->release());
    std::printf("short=%.3f long=%.3f ratio=%.2f shortBytes=%.0f longBytes=%.0f\n",
                Median(ofShort.ms), Median(ofLong.ms), Median(ofLong.ms) / Median(ofShort.ms),
                Median(ofShort.bytes), Median(ofLong.bytes));
}

// Microseconds a call, of many in a row.
template <typename Operation>
static double TimeOf(Operation operation) {
    constexpr int calls = 100;
    const std::int64_t before = sound::MonotonicNs();
    for (int i = 0; i < calls; ++i) {
        operation();
    }
    return static_cast<double>(sound::MonotonicNs() - before) / 1e3 / calls;
}

static void TimeSpectrum(const char* path) {
    FMOD::System* system = Begin();
    FMOD::Channel* channel = nullptr;
    Check(system->playSound(FMOD_CHANNEL_FREE, Open(*system, path), false, &channel));
    std::array<float, bands> spectrum;

    std::array<float, std::size_t{2} * bands> samples;
    std::array<float, std::size_t{2} * bands> window;
    std::array<float, std::size_t{2} * bands> windowed;
    std::array<kiss_fft_cpx, bands + 1> bins;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto number = static_cast<float>(i);
        samples[i] = std::sin(number);
        window[i] = 1.0F - std::fabs(number / bands - 1.0F);
    }
    kiss_fftr_cfg transform = kiss_fftr_alloc(2 * bands, 0, nullptr, nullptr);

    std::vector<double> whole;
    std::vector<double> bare;
    for (int i = 0; i < 1000; ++i) {
        whole.push_back(TimeOf([&] {
            Check(system->getSpectrum(spectrum.data(), bands, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE));
        }));
        bare.push_back(TimeOf([&] {
            std::transform(samples.begin(), samples.end(), window.begin(), windowed.begin(),
                           std::multiplies<>());
            kiss_fftr(transform, windowed.data(), bins.data());
        }));
    }
    kiss_fftr_free(transform);
    Check(system->release());
    std::printf("spectrum=%.2f bare=%.2f ratio=%.2f\n", Median(whole), Median(bare),
                Median(whole) / Median(bare));
}

int main(int argc, char** argv) {
    const std::string_view mode = argc > 2 ? argv[1] : "";
    if (mode == "opening" && argc == 4) {
        TimeOpening(argv[2], argv[3]);
    } else if (mode == "spectrum" && argc == 3) {
        TimeSpectrum(argv[2]);
    } else {
        std::fputs("usage: micro opening SHORT LONG, micro spectrum MUSIC\n", stderr);
        return 2;
    }
    return 0;
}
