// The Fourier transform behind the spectrum; each system has its own.
#pragma once

#include <complex>
#include <memory>

namespace sound {

class Transform {
public:
    /// Of @p length (even, at least 2) real samples. Throws std::bad_alloc.
    explicit Transform(int length);
    Transform(const Transform&) = delete;
    Transform& operator=(const Transform&) = delete;
    ~Transform();

    /// Writes the length / 2 + 1 @p bins from the constant to half the sample rate, not scaled: a
    /// constant 1 gives the length.
    void Run(const float* samples, std::complex<float>* bins) const;

private:
    struct Plan;
    std::unique_ptr<Plan> plan;
};

} // namespace sound
