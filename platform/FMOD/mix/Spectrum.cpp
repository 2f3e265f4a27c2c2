#include "Spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>

namespace sound {

bool Spectrum::CanAnalyse(int wanted) {
    return wanted >= fewestBands && wanted <= mostBands &&
           std::has_single_bit(static_cast<unsigned int>(wanted));
}

float* Spectrum::SamplesFor(int wanted) {
    if (wanted != bands) {
        bands = 0;
        const auto length = 2 * static_cast<std::size_t>(wanted);
        transform.emplace(2 * wanted);
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
    transform->Run(triangular ? windowed.data() : samples.data(), bins.data());
    // Half of a sine's magnitude is at its frequency, half at the mirrored one, which is left out;
    // a constant 1 would give the sum of the window.
    const float scale = 2.0F / static_cast<float>(triangular ? bands : 2 * bands);
    std::transform(bins.begin(), bins.end() - 1, magnitudes, [scale](std::complex<float> bin) {
        return std::sqrt(bin.real() * bin.real() + bin.imag() * bin.imag()) * scale;
    });
    magnitudes[0] /= 2.0F; // a constant has no mirror
}

} // namespace sound
