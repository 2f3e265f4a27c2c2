#include "WavFile.h"

#include "Output.h"

#include <array>
#include <bit>
#include <cerrno>
#include <system_error>

namespace record {

namespace {

static_assert(std::endian::native == std::endian::little, "the format's order of bytes");

constexpr std::uint32_t channels = 2;
constexpr std::uint32_t frameBytes = channels * sizeof(float);
constexpr std::uint32_t rateHz = sound::outputRateHz;

struct Header {
    std::array<char, 4> riff = {'R', 'I', 'F', 'F'};
    std::uint32_t riffBytes = 0; ///< of what follows
    std::array<char, 4> wave = {'W', 'A', 'V', 'E'};
    std::array<char, 4> format = {'f', 'm', 't', ' '};
    std::uint32_t formatBytes = 16;
    std::uint16_t encoding = 3; ///< float
    std::uint16_t channelCount = channels;
    std::uint32_t framesPerSecond = rateHz;
    std::uint32_t bytesPerSecond = rateHz * frameBytes;
    std::uint16_t bytesPerFrame = frameBytes;
    std::uint16_t bitsPerSample = 8 * sizeof(float);
    std::array<char, 4> fact = {'f', 'a', 'c', 't'};
    std::uint32_t factBytes = 4;
    std::uint32_t frameCount = 0;
    std::array<char, 4> data = {'d', 'a', 't', 'a'};
    std::uint32_t dataBytes = 0;
};
static_assert(sizeof(Header) == 56, "no gaps between the fields");

} // namespace

WavFile::WavFile(const std::string& path) : file(std::fopen(path.c_str(), "wbe")) {
    if (file == nullptr) {
        throw std::system_error(errno, std::generic_category());
    }
    WriteHeader();
}

void WavFile::Add(std::span<const float> samples) {
    Write(samples.data(), samples.size_bytes());
    dataBytes += static_cast<std::uint32_t>(samples.size_bytes());
}

void WavFile::Finish() {
    if (std::fseek(file.get(), 0, SEEK_SET) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    WriteHeader();
    if (std::fclose(file.release()) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
}

void WavFile::Write(const void* bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, file.get()) != count) {
        throw std::system_error(errno, std::generic_category());
    }
}

void WavFile::WriteHeader() {
    Header header;
    header.riffBytes = static_cast<std::uint32_t>(sizeof(Header) - 8 + dataBytes);
    header.frameCount = dataBytes / frameBytes;
    header.dataBytes = dataBytes;
    Write(&header, sizeof(header));
}

} // namespace record
