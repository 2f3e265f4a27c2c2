// Stereo frames at a file's own rate -> frames at the output's rate.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

struct soxr;

namespace sound {

/// Keeps time: n frames in give n * 44100 / rate frames out, aligned at the first frame.
class Resampler {
public:
    /// Throws std::bad_alloc when out of memory.
    explicit Resampler(int fromRateHz);

    /// Appends to @p out the output that @p frames make available.
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
