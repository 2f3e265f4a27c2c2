// What the library answers where it lacks memory, threads or its file, and that it can be asked
// again.
#include "SystemFixture.h"

#include <kiss_fftr.h>
#include <mpg123.h>
#include <soxr.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

// What has run out.
bool noDecoder = false;
bool noResampler = false;
bool noTransform = false;

} // namespace

// The linker leads the library's calls of these here (--wrap).
extern "C" {

mpg123_handle* RealNew(const char* decoder, int* error) __asm__("__real_mpg123_new");
mpg123_handle* WrappedNew(const char* decoder, int* error) __asm__("__wrap_mpg123_new");

mpg123_handle* WrappedNew(const char* decoder, int* error) {
    return noDecoder ? nullptr : RealNew(decoder, error);
}

soxr_t RealCreate(double from, double to, unsigned channels, soxr_error_t* error,
                  const soxr_io_spec_t* samples, const soxr_quality_spec_t* quality,
                  const soxr_runtime_spec_t* runtime) __asm__("__real_soxr_create");
soxr_t WrappedCreate(double from, double to, unsigned channels, soxr_error_t* error,
                     const soxr_io_spec_t* samples, const soxr_quality_spec_t* quality,
                     const soxr_runtime_spec_t* runtime) __asm__("__wrap_soxr_create");

soxr_t WrappedCreate(double from, double to, unsigned channels, soxr_error_t* error,
                     const soxr_io_spec_t* samples, const soxr_quality_spec_t* quality,
                     const soxr_runtime_spec_t* runtime) {
    return noResampler ? nullptr : RealCreate(from, to, channels, error, samples, quality, runtime);
}

kiss_fftr_cfg RealAlloc(int length, int inverse, void* memory,
                        std::size_t* size) __asm__("__real_kiss_fftr_alloc");
kiss_fftr_cfg WrappedAlloc(int length, int inverse, void* memory,
                           std::size_t* size) __asm__("__wrap_kiss_fftr_alloc");

kiss_fftr_cfg WrappedAlloc(int length, int inverse, void* memory, std::size_t* size) {
    return noTransform ? nullptr : RealAlloc(length, inverse, memory, size);
}

} // extern "C"

class ShortageTest : public SystemFixture {
protected:
    ~ShortageTest() override {
        noDecoder = false;
        noResampler = false;
        noTransform = false;
    }
};

TEST_F(ShortageTest, OfMemoryOrThreadsForTheOutputIsSaid) {
    for (const auto lack : {script::Shortage::Memory, script::Shortage::Threads}) {
        script::RefuseNextStart(lack);

        EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_MEMORY);
        EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, nullptr), FMOD_OK);
        ASSERT_EQ(system->close(), FMOD_OK);
    }
}

TEST_F(ShortageTest, OfMemoryForADecoderOrAResamplerIsSaid) {
    Init();
    const std::string path = Encoded(441.0, 48000, 48000);

    for (bool* hasRunOut : {&noDecoder, &noResampler}) {
        *hasRunOut = true;
        EXPECT_EQ(Create(path), FMOD_ERR_MEMORY);
        *hasRunOut = false;
        EXPECT_EQ(Create(path), FMOD_OK);
    }
}

TEST_F(ShortageTest, OfMemoryWhileItPlaysEndsTheMusicAsAReadErrorDoes) {
    Init();
    const auto first = files::ReadAll(Encoded(441.0, 44100));
    const auto second = files::ReadAll(Encoded(441.0, 48000, 48000));
    files::WriteAll(folder.Path("both.mp3"), files::Joined({first, second}));
    noResampler = true; // which only the second needs

    FMOD::Channel* channel = Play(Open(folder.Path("both.mp3")));
    script::Pull(60'000);
    script::HearAll();

    unsigned int position = 0;
    EXPECT_EQ(channel->getPosition(&position, FMOD_TIMEUNIT_MS), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(position, 1000U);
}

TEST_F(ShortageTest, OfMemoryForASpectrumIsSaid) {
    Init();
    std::vector<float> spectrum(512);
    const auto ask = [&] {
        return system->getSpectrum(spectrum.data(), 512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE);
    };

    noTransform = true;
    EXPECT_EQ(ask(), FMOD_ERR_MEMORY);
    noTransform = false;
    EXPECT_EQ(ask(), FMOD_OK);
}

TEST_F(ShortageTest, OfAFileThatCouldBeReadBeforeIsSaid) {
    Init();
    FMOD::Sound* sound = Open(Encoded());
    Play(sound);
    script::Pull(10000);
    FMOD::Channel* channel = nullptr;

    reads::FailAfter(0);

    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(channel, nullptr);
    EXPECT_EQ(script::Pull(1000), std::vector<float>(2000, 0.0F));
}
