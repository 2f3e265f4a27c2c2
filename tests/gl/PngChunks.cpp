#include "PngChunks.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace gltest {

static constexpr std::array<unsigned char, 8> signature = {0x89, 'P',  'N',  'G',
                                                           '\r', '\n', 0x1A, '\n'};

static constexpr std::size_t headBytes = 8; // length and name
static constexpr std::size_t checksumBytes = 4;

static std::uint32_t Checksum(const Bytes& nameAndData) {
    return static_cast<std::uint32_t>(
        crc32(0, nameAndData.data(), static_cast<uInt>(nameAndData.size())));
}

static void AppendNumber(Bytes& bytes, std::uint32_t number) {
    bytes.resize(bytes.size() + 4);
    png_save_uint_32(&*(bytes.end() - 4), number);
}

std::vector<PngChunk> ChunksOf(const Bytes& bytes) {
    std::vector<PngChunk> chunks;
    std::size_t at = signature.size();
    if (bytes.size() < at || !std::equal(signature.begin(), signature.end(), bytes.begin())) {
        return chunks;
    }
    while (bytes.size() - at >= headBytes + checksumBytes) {
        const std::size_t length = png_get_uint_32(&bytes[at]);
        if (length > bytes.size() - at - headBytes - checksumBytes) {
            break;
        }
        const auto name = bytes.begin() + static_cast<std::ptrdiff_t>(at) + 4;
        const auto data = name + 4;
        const auto end = data + static_cast<std::ptrdiff_t>(length);
        chunks.push_back({.name = std::string(name, data), .data = Bytes(data, end)});
        chunks.back().checksumIsWrong = png_get_uint_32(&*end) != Checksum(Bytes(name, end));
        at += headBytes + length + checksumBytes;
    }
    return chunks;
}

Bytes FileOf(const std::vector<PngChunk>& chunks) {
    Bytes file(signature.begin(), signature.end());
    for (const PngChunk& chunk : chunks) {
        Bytes nameAndData(chunk.name.begin(), chunk.name.end());
        nameAndData.insert(nameAndData.end(), chunk.data.begin(), chunk.data.end());
        AppendNumber(file,
                     chunk.claimedLength.value_or(static_cast<std::uint32_t>(chunk.data.size())));
        file.insert(file.end(), nameAndData.begin(), nameAndData.end());
        AppendNumber(file, Checksum(nameAndData) ^ (chunk.checksumIsWrong ? 1U : 0U));
    }
    return file;
}

} // namespace gltest
