// The strength of each frequency band in the latest samples.
#pragma once

#include "Transform.h"

#include <FMOD/FMOD.h>

#include <complex>
#include <optional>
#include <vector>

namespace sound {

class Spectrum {
public:
    static constexpr int fewestBands = 64;
    static constexpr int mostBands = 8192;

    /// Whether @p bands is a power of two from fewestBands to mostBands.
    static bool CanAnalyse(int bands);

    /// Where to put the 2 * @p bands samples to analyse. Throws std::bad_alloc; allocates only when
    /// the number changes.
    float* SamplesFor(int bands);

    /// Analyses them: writes as many @p magnitudes as SamplesFor had bands, band 0 the lowest. A
    /// full-scale sine in the middle of a band reads 1, silence 0.
    void Analyse(FMOD_DSP_FFT_WINDOW window, float* magnitudes);

private:
    int bands = 0;
    std::optional<Transform> transform;
    std::vector<float> samples;
    std::vector<float> windowed;
    std::vector<float> triangle;
    std::vector<std::complex<float>> bins;
};

} // namespace sound
