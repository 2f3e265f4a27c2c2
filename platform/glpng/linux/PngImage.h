// PNG file to pixels in memory.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

namespace glpng {

/// A decoded picture: rows from the top down, without padding, 8 bits a channel.
struct PngImage {
    unsigned int width = 0;  ///< pixels
    unsigned int height = 0; ///< pixels
    unsigned int depth = 0;  ///< bits a channel, as stored in the file
    bool hasAlpha = false;   ///< RGBA, or else RGB
    std::unique_ptr<unsigned char[]> pixels;

    std::size_t RowBytes() const { return std::size_t{width} * (hasAlpha ? 4 : 3); }
};

/// Reads the PNG file that starts at the position of @p file.
/// False, with @p image in any state: it is not a PNG file, is truncated, has a side of more than
/// @p maxSide (>= 1) pixels, or pixels that would need more than maxPixelBytes, which are then not
/// allocated; a critical chunk or tRNS is wrong in checksum, length, place or number; or a pixel's
/// index is beyond the palette. Damage in other chunks, and what follows the picture in its IDAT
/// chunks, are ignored. Throws nothing.
bool DecodePng(std::FILE* file, unsigned int maxSide, PngImage& image);

} // namespace glpng
