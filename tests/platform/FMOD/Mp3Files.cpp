// Files to play, made by the test that plays them.
#include "Mp3Files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace files {

Folder::Folder() {
    std::string name = std::filesystem::temp_directory_path() / "skovra-sound-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        ADD_FAILURE() << "cannot make a folder like " << name;
    }
    path = name;
}

Folder::~Folder() {
    std::filesystem::remove_all(path);
}

static void Run(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) {
        ADD_FAILURE() << "cannot run " << command[0] << "; it is in the package of that name";
    } else if (waitpid(child, &status, 0) != child || status != 0) {
        ADD_FAILURE() << command[0] << " failed";
    }
}

static void AppendNumber(Bytes& bytes, std::size_t value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<unsigned char>(value >> 8 * i & 0xFF));
    }
}

static void AppendText(Bytes& bytes, std::string_view text) {
    for (const char letter : text) {
        bytes.push_back(static_cast<unsigned char>(letter));
    }
}

// A WAV file of 16-bit stereo frames.
static Bytes Wave(std::span<const float> frames, int rateHz) {
    const auto rate = static_cast<std::size_t>(rateHz);
    Bytes wave;
    AppendText(wave, "RIFF");
    AppendNumber(wave, 36 + 2 * frames.size(), 4);
    AppendText(wave, "WAVE");
    AppendText(wave, "fmt ");
    AppendNumber(wave, 16, 4);
    AppendNumber(wave, 1, 2);
    AppendNumber(wave, 2, 2);
    AppendNumber(wave, rate, 4);
    AppendNumber(wave, 4 * rate, 4);
    AppendNumber(wave, 4, 2);
    AppendNumber(wave, 16, 2);
    AppendText(wave, "data");
    AppendNumber(wave, 2 * frames.size(), 4);
    for (const float sample : frames) {
        const auto value = static_cast<std::int16_t>(std::lround(sample * 32767.0F));
        AppendNumber(wave, static_cast<std::uint16_t>(value), 2);
    }
    return wave;
}

void EncodeMp3(const std::string& path, std::span<const float> frames, int rateHz,
               const std::vector<std::string>& options) {
    const std::string wavePath = path + ".wav";
    WriteAll(wavePath, Wave(frames, rateHz));
    std::vector<std::string> command = {"lame", "--quiet"};
    command.insert(command.end(), options.begin(), options.end());
    command.insert(command.end(), {wavePath, path});
    Run(command);
    std::filesystem::remove(wavePath);
}

Bytes ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

void WriteAll(const std::string& path, const Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

Bytes Noise(std::size_t count) {
    std::mt19937 random(1);
    Bytes bytes(count);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(random() >> 24);
    }
    return bytes;
}

Bytes Joined(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Bytes First(const Bytes& bytes, std::size_t count) {
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

Bytes From(const Bytes& bytes, std::size_t count) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(count), bytes.end());
}

Bytes Tag(std::size_t saidLength, std::size_t actualLength) {
    Bytes tag = {'I', 'D', '3', 4, 0, 0};
    for (int shift = 21; shift >= 0; shift -= 7) {
        tag.push_back(static_cast<unsigned char>(saidLength >> shift & 0x7F));
    }
    tag.resize(10 + actualLength);
    return tag;
}

Bytes LayerTwo() {
    Bytes frame = {0xFF, 0xFD, 0x84, 0x00}; // 128 kbit/s, 48 kHz
    frame.resize(384);
    return Joined(std::vector<Bytes>(10, frame));
}

} // namespace files
