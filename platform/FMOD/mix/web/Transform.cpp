// By KissFFT's C++ header: no system has its library for a web page.
#include "Transform.h"

#include <cstddef>

#include <kissfft.hh>

namespace sound {

struct Transform::Plan {
    explicit Plan(int length) : half(static_cast<std::size_t>(length) / 2), fft(half, false) {}

    std::size_t half;
    kissfft<float> fft; // of pairs of samples, taken as complex numbers
};

Transform::Transform(int length) : plan(std::make_unique<Plan>(length)) {}

Transform::~Transform() = default;

void Transform::Run(const float* samples, std::complex<float>* bins) const {
    plan->fft.transform_real(samples, bins);
    bins[plan->half] = bins[0].imag(); // where it leaves the last one
    bins[0] = bins[0].real();
}

} // namespace sound
