#include "Spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <new>

#include <kiss_fftr.h>

namespace sound {

bool Spectrum::CanAnalyse(int wanted) {
    return wanted >= fewestBands && wanted <= mostBands &&
           std::has_single_bit(static_cast<unsigned int>(wanted));
}

void Spectrum::Delete::operator()(kiss_fftr_state* owned) const {
    kiss_fftr_free(owned);
}

float* Spectrum::SamplesFor(int wanted) {
    if (wanted != bands) {
        bands = 0;
        const auto length = 2 * static_cast<std::size_t>(wanted);
        transform.reset(kiss_fftr_alloc(2 * wanted, 0, nullptr, nullptr));
        if (transform == nullptr) {
            throw std::bad_alloc();
        }
        samples.resize(length);
        windowed.resize(length);
        bins.resize(length / 2 + 1);
        triangle.resize(length);
        const auto half = static_cast<float>(wanted);
        for (std::size_t i = 0; i < length; ++i) {
            triangle[i] = 1.0F - std::fabs(static_cast<float>(i) / half - 1.0F);
        }
        bands = wanted;
    }
    return samples.data();
}

void Spectrum::Analyse(FMOD_DSP_FFT_WINDOW window, float* magnitudes) {
    const bool triangular = window == FMOD_DSP_FFT_WINDOW_TRIANGLE;
    if (triangular) {
        std::transform(samples.begin(), samples.end(), triangle.begin(), windowed.begin(),
                       std::multiplies<>());
    }
    static_assert(sizeof(Bin) == sizeof(kiss_fft_cpx));
    kiss_fftr(transform.get(), triangular ? windowed.data() : samples.data(),
              reinterpret_cast<kiss_fft_cpx*>(bins.data()));
    // Half of a sine's magnitude is at its frequency, half at the mirrored one, which is left out;
    // a constant 1 would give the sum of the window.
    const float scale = 2.0F / static_cast<float>(triangular ? bands : 2 * bands);
    std::transform(bins.begin(), bins.end() - 1, magnitudes, [scale](const Bin& bin) {
        return std::sqrt(bin.real * bin.real + bin.imaginary * bin.imaginary) * scale;
    });
    magnitudes[0] /= 2.0F; // a constant has no mirror
}

} // namespace sound
