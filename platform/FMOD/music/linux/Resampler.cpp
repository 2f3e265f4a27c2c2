#include "Resampler.h"

#include "Output.h"

#include <new>

#include <soxr.h>

namespace sound {

static constexpr std::size_t stepFrames = 4096;

Resampler::Resampler(int fromRateHz) {
    const soxr_io_spec_t samples = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    // The best quality for single precision; it takes a quarter more time than the next lower one.
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_24_BITQ, 0);
    const soxr_runtime_spec_t oneThread = soxr_runtime_spec(1);
    resampler.reset(soxr_create(fromRateHz, static_cast<double>(outputRateHz), 2, nullptr, &samples,
                                &quality, &oneThread));
    if (resampler == nullptr) {
        throw std::bad_alloc();
    }
}

void Resampler::Delete::operator()(soxr* owned) const {
    soxr_delete(owned);
}

void Resampler::Process(std::span<const float> frames, std::vector<float>& out) {
    std::size_t left = frames.size() / 2;
    const float* next = frames.data();
    std::size_t made = stepFrames;
    while (left > 0 || made == stepFrames) {
        const std::size_t before = out.size();
        std::size_t used = 0;
        out.resize(before + 2 * stepFrames);
        soxr_process(resampler.get(), next, left, &used, &out[before], stepFrames, &made);
        out.resize(before + 2 * made);
        next += 2 * used;
        left -= used;
    }
}

void Resampler::Finish(std::vector<float>& out) {
    std::size_t made = stepFrames;
    while (made == stepFrames) {
        const std::size_t before = out.size();
        out.resize(before + 2 * stepFrames);
        soxr_process(resampler.get(), nullptr, 0, nullptr, &out[before], stepFrames, &made);
        out.resize(before + 2 * made);
    }
}

} // namespace sound
