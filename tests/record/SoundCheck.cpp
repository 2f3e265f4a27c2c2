// What is to be heard in a recording.
//   sound-check same WAV MP3   ends with 0 if WAV's samples are those that libmpg123 decodes
//   sound-check lag WAV RAW    prints by how many frames RAW (32-bit float, stereo) is late on WAV
#include <mpg123.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Samples = std::vector<float>;

constexpr std::size_t wavHeaderBytes = 56;

Samples Read(const std::string& path, std::size_t headerBytes) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (bytes.size() < headerBytes) {
        throw std::runtime_error(path + " is too short");
    }
    Samples samples((bytes.size() - headerBytes) / sizeof(float));
    std::memcpy(samples.data(), bytes.data() + headerBytes, samples.size() * sizeof(float));
    return samples;
}

Samples Decode(const std::string& path, std::size_t count) {
    const std::unique_ptr<mpg123_handle, decltype(&mpg123_delete)> decoder(
        mpg123_new(nullptr, nullptr), mpg123_delete);
    mpg123_param(decoder.get(), MPG123_ADD_FLAGS,
                 MPG123_FORCE_FLOAT | MPG123_GAPLESS | MPG123_QUIET, 0);
    if (mpg123_open(decoder.get(), path.c_str()) != MPG123_OK) {
        throw std::runtime_error("cannot decode " + path);
    }
    Samples samples(count);
    std::size_t done = 0;
    int result = MPG123_OK;
    while (done < count && (result == MPG123_OK || result == MPG123_NEW_FORMAT)) {
        std::size_t bytes = 0;
        result = mpg123_read(decoder.get(), samples.data() + done, (count - done) * sizeof(float),
                             &bytes);
        done += bytes / sizeof(float);
    }
    samples.resize(done);
    return samples;
}

int CompareToMusic(const std::string& wav, const std::string& music) {
    const Samples recorded = Read(wav, wavHeaderBytes);
    const Samples decoded = Decode(music, recorded.size());
    std::size_t different = 0;
    for (std::size_t i = 0; i < recorded.size(); ++i) {
        const float expected = i < decoded.size() ? std::clamp(decoded[i], -1.0F, 1.0F) : 0.0F;
        different += recorded[i] == expected ? 0 : 1;
    }
    std::cout << recorded.size() << " samples, " << different << " different\n";
    return recorded.empty() || different > 0 ? 1 : 0;
}

/// Where the left sides of four seconds, from the fifth on, are most alike.
int PrintLag(const std::string& wav, const std::string& raw) {
    constexpr int begin = 5 * 44100;
    constexpr int length = 4 * 44100;
    constexpr int farthest = 3000;
    const Samples one = Read(wav, wavHeaderBytes);
    const Samples other = Read(raw, 0);
    if (one.size() / 2 < begin + length || other.size() / 2 < begin + length + farthest) {
        throw std::runtime_error("too short to compare");
    }
    int best = 0;
    double likest = -1;
    for (int lag = -farthest; lag <= farthest; ++lag) {
        double product = 0;
        for (int i = begin; i < begin + length; ++i) {
            product +=
                one[2 * static_cast<std::size_t>(i)] * other[2 * static_cast<std::size_t>(i + lag)];
        }
        if (product > likest) {
            likest = product;
            best = lag;
        }
    }
    std::cout << best << '\n';
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::string what = argc == 4 ? argv[1] : "";
        if (what == "same") {
            return CompareToMusic(argv[2], argv[3]);
        }
        if (what == "lag") {
            return PrintLag(argv[2], argv[3]);
        }
        throw std::runtime_error("usage: sound-check same WAV MP3 | lag WAV RAW");
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
