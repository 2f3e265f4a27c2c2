// PNG files taken apart, to damage them on purpose.
#pragma once

#include "PngFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace gltest {

/// A chunk of a PNG file.
struct PngChunk {
    std::string name; ///< four bytes
    Bytes data = {};
    std::optional<std::uint32_t> claimedLength = {}; ///< instead of that of the data
    bool checksumIsWrong = false;
};

/// The chunks of the file @p bytes, as far as they are whole; none: it begins like no PNG file.
std::vector<PngChunk> ChunksOf(const Bytes& bytes);

/// The file of @p chunks.
Bytes FileOf(const std::vector<PngChunk>& chunks);

} // namespace gltest
