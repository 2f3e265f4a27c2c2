// What a PNG file is made of.
#pragma once

#include <cstddef>
#include <cstdint>

namespace glpng {

inline constexpr std::size_t signatureBytes = 8;

/// The names of the chunks that pixels depend on.
inline constexpr std::uint32_t headerChunk = 0x49484452;       // IHDR
inline constexpr std::uint32_t paletteChunk = 0x504C5445;      // PLTE
inline constexpr std::uint32_t transparencyChunk = 0x74524E53; // tRNS
inline constexpr std::uint32_t pixelsChunk = 0x49444154;       // IDAT
inline constexpr std::uint32_t endChunk = 0x49454E44;          // IEND

/// The number in the four bytes at @p bytes.
inline std::uint32_t BigEndian(const unsigned char* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

} // namespace glpng
