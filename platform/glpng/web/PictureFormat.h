// What a PNG file says of its picture, and whether its chunks are whole.
#pragma once

#include <cstdio>

namespace glpng {

struct PictureFormat {
    unsigned int width = 0;  ///< pixels
    unsigned int height = 0; ///< pixels
    unsigned int depth = 0;  ///< bits a channel, as stored in the file
    bool hasAlpha = false;
};

/// Reads the PNG file that starts at the position of @p file.
/// False, with @p format in any state: it is not a PNG file, is truncated, has a side of more than
/// @p maxSide pixels, or more than maxPixelBytes of pixels; or a critical chunk or tRNS is wrong in
/// checksum, length, place or number. Whether the pixels can be decompressed is not examined.
bool ReadPictureFormat(std::FILE* file, unsigned int maxSide, PictureFormat& format);

} // namespace glpng
