// The music as decoded frames, the reference for what was heard.
#include "Music.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include <mpg123.h>

namespace bench {

// Between 16-bit samples and floats, and between decoders.
static constexpr float tolerance = 0.002F;

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

} // namespace bench
