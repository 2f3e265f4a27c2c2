#include "Music.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include <mpg123.h>

namespace bench {

// Between 16-bit samples and floats, and between decoders.
static constexpr float tolerance = 0.002F;

// The same of what two resamplers made of it: PipeWire's, and the one that undoes it.
static constexpr float resampledTolerance = 0.01F;

// As far as music without high notes moves in half a frame.
static constexpr float halfFrame = 0.1F;

[[noreturn]] static void Fail(const std::string& path, const char* why) {
    std::fprintf(stderr, "%s: %s\n", path.c_str(), why);
    std::exit(2);
}

Music::Music(const std::string& path) {
    mpg123_init();
    mpg123_handle* decoder = mpg123_new(nullptr, nullptr);
    mpg123_param(decoder, MPG123_ADD_FLAGS, MPG123_FORCE_FLOAT | MPG123_QUIET, 0.0);
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (mpg123_open(decoder, path.c_str()) != MPG123_OK ||
        mpg123_getformat(decoder, &rate, &channels, &encoding) != MPG123_OK || rate != rateHz ||
        channels != 2) {
        Fail(path, "is not a 44.1 kHz stereo MP3 file");
    }
    std::array<Frame, 4096> block;
    std::size_t size = 0;
    do {
        if (mpg123_read(decoder, block.data(), sizeof(block), &size) == MPG123_ERR) {
            Fail(path, mpg123_strerror(decoder));
        }
        frames.insert(frames.end(), block.begin(),
                      block.begin() + static_cast<std::ptrdiff_t>(size / sizeof(Frame)));
    } while (size > 0);
    mpg123_delete(decoder);
}

bool Music::IsFrame(std::int64_t number, Frame heard) const {
    if (number < 0 || number >= std::ssize(frames)) {
        return false;
    }
    const Frame& frame = frames[static_cast<std::size_t>(number)];
    return std::fabs(frame.left - heard.left) < tolerance &&
           std::fabs(frame.right - heard.right) < tolerance;
}

bool Music::IsAt(std::span<const Frame> part, std::int64_t number) const {
    for (const Frame& frame : part) {
        if (!IsFrame(number++, frame)) {
            return false;
        }
    }
    return true;
}

std::int64_t Music::Find(std::span<const Frame> part, std::int64_t expected) const {
    const std::int64_t last = std::ssize(frames) - std::ssize(part);
    for (std::int64_t number = expected; number <= last; ++number) {
        if (IsAt(part, number)) {
            return number;
        }
    }
    for (std::int64_t number = 0; number < expected && number <= last; ++number) {
        if (IsAt(part, number)) {
            return number;
        }
    }
    return -1;
}

// A line through four frames; of notes below 2 kHz it misses less than a thousandth.
Frame Music::At(Place place) const {
    const std::int64_t last = std::ssize(frames) - 1;
    const double x = place.fraction;
    const std::array<double, 4> weights = {
        -x * (x - 1.0) * (x - 2.0) / 6.0, (x + 1.0) * (x - 1.0) * (x - 2.0) / 2.0,
        -(x + 1.0) * x * (x - 2.0) / 2.0, (x + 1.0) * x * (x - 1.0) / 6.0};
    double left = 0.0;
    double right = 0.0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const std::int64_t number = place.frame - 1 + static_cast<std::int64_t>(i);
        const Frame frame =
            frames[static_cast<std::size_t>(std::clamp(number, std::int64_t{0}, last))];
        left += weights[i] * static_cast<double>(frame.left);
        right += weights[i] * static_cast<double>(frame.right);
    }
    return {static_cast<float>(left), static_cast<float>(right)};
}

bool Music::IsAtPlace(Place place, Frame heard) const {
    const Frame frame = At(place);
    return std::fabs(frame.left - heard.left) < resampledTolerance &&
           std::fabs(frame.right - heard.right) < resampledTolerance;
}

// A first look, at few frames: less than half a frame off, it is not far off in value either.
bool Music::MayBeAt(std::span<const Frame> part, std::int64_t number) const {
    for (std::size_t i = 0; i < part.size(); i += 8) {
        const Frame& frame = frames[static_cast<std::size_t>(number) + i];
        if (std::fabs(frame.left - part[i].left) > halfFrame ||
            std::fabs(frame.right - part[i].right) > halfFrame) {
            return false;
        }
    }
    return true;
}

// Moves the place to where the squares of what differs are least; nothing if it does not fit there.
std::optional<Music::Place> Music::Adjust(std::span<const Frame> part, std::int64_t number) const {
    Place place = {number, 0.0};
    for (int round = 0; round < 4; ++round) {
        double along = 0.0;
        double slopes = 0.0;
        for (const Frame& heard : part) {
            const Frame here = At(place);
            const Frame before = At({place.frame - 1, place.fraction});
            const Frame after = At({place.frame + 1, place.fraction});
            const double left = static_cast<double>(after.left - before.left) / 2.0;
            const double right = static_cast<double>(after.right - before.right) / 2.0;
            along += left * static_cast<double>(heard.left - here.left) +
                     right * static_cast<double>(heard.right - here.right);
            slopes += left * left + right * right;
            ++place.frame;
        }
        place.frame = number;
        place.fraction += slopes > 0.0 ? along / slopes : 1.0;
        if (std::fabs(place.fraction) > 0.75) {
            return std::nullopt;
        }
    }
    for (const Frame& heard : part) {
        if (!IsAtPlace(place, heard)) {
            return std::nullopt;
        }
        ++place.frame;
    }
    place.frame = number;
    return place;
}

std::optional<Music::Place> Music::FindResampled(std::span<const Frame> part,
                                                 std::int64_t expected) const {
    const std::int64_t last = std::ssize(frames) - std::ssize(part);
    const std::int64_t first =
        std::clamp(expected - 1, std::int64_t{0}, std::max(last, std::int64_t{0}));
    for (std::int64_t i = 0; i <= last; ++i) {
        const std::int64_t number = first + i <= last ? first + i : i - (last - first) - 1;
        if (MayBeAt(part, number)) {
            if (const auto place = Adjust(part, number)) {
                return place;
            }
        }
    }
    return std::nullopt;
}

} // namespace bench
