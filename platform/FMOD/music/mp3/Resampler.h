// Stereo frames at a file's own rate -> frames at the output's rate.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct soxr;

namespace sound {

/// Keeps time: n frames in give n * 44100 / rate frames out, the first in step with the first.
class Resampler {
public:
    /// Throws std::bad_alloc when memory ran out.
    explicit Resampler(int fromRateHz);

    /// Appends to @p out what of @p frames can be told already.
    void Process(std::span<const float> frames, std::vector<float>& out);

    /// Appends the rest, at the end of the music.
    void Finish(std::vector<float>& out);

private:
    struct Delete {
        void operator()(soxr* owned) const;
    };

    std::unique_ptr<soxr, Delete> resampler;
};

} // namespace sound
