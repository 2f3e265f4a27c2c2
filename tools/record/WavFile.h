// Writes sound as a WAV file of 32-bit float samples.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

namespace record {

class WavFile {
public:
    /// Starts the file @p path. This and all operations throw std::system_error, without the path
    /// in its text.
    explicit WavFile(const std::string& path);

    /// @p samples: left and right interleaved.
    void Add(std::span<const float> samples);

    /// Completes the file; nothing may be added afterwards.
    void Finish();

private:
    struct Close {
        void operator()(std::FILE* owned) const { std::fclose(owned); }
    };

    void Write(const void* bytes, std::size_t count);
    void WriteHeader();

    std::unique_ptr<std::FILE, Close> file;
    std::uint32_t dataBytes = 0;
};

} // namespace record
