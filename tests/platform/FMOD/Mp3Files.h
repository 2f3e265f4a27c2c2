// MP3 files made by the tests that play them.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace files {

using Bytes = std::vector<unsigned char>;

/// A temporary folder, removed with its contents.
class Folder {
public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();

    std::string Path(const std::string& name) const { return path + "/" + name; }

private:
    std::string path;
};

/// Encodes stereo frames with the lame program and @p options; fails the test on errors. Only a
/// variable bit rate (-V) keeps the level: otherwise lame attenuates.
void EncodeMp3(const std::string& path, std::span<const float> frames, int rateHz,
               const std::vector<std::string>& options = {"-V", "2"});

Bytes ReadAll(const std::string& path);
void WriteAll(const std::string& path, const Bytes& bytes);

/// @p count bytes of noise, the same in every run.
Bytes Noise(std::size_t count);

/// All @p parts concatenated.
Bytes Joined(const std::vector<Bytes>& parts);

/// The first @p count bytes, and the rest.
Bytes First(const Bytes& bytes, std::size_t count);
Bytes From(const Bytes& bytes, std::size_t count);

/// An ID3v2 tag of @p actualLength bytes that claims @p saidLength.
Bytes Tag(std::size_t saidLength, std::size_t actualLength);

/// Frames of silence in layer II.
Bytes LayerTwo();

} // namespace files
