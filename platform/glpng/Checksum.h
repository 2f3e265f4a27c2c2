// The checksum of PNG's chunks.
#pragma once

#include <cstddef>
#include <cstdint>

namespace glpng {

/// The CRC-32 of what @p checksum is of, 0 for nothing, and then @p count more bytes.
std::uint32_t ExtendedChecksum(std::uint32_t checksum, const unsigned char* bytes,
                               std::size_t count);

} // namespace glpng
