// PNG files made by the tests.
#pragma once

#include <png.h>

#include <optional>
#include <string>
#include <vector>

namespace gltest {

using Bytes = std::vector<unsigned char>;

/// The description of a PNG file.
struct PngFile {
    unsigned int width = 1;  ///< pixels
    unsigned int height = 1; ///< pixels
    int colourType = PNG_COLOR_TYPE_RGB;
    int depth = 8; ///< bits a channel
    bool interlaced = false;
    int compression = 6; ///< 0 (none) to 9
    Bytes rows = {}; ///< top down, in the file's own packing: high byte and leftmost pixel first
    std::vector<png_color> palette = {};
    Bytes paletteAlpha = {};                      ///< alpha of the palette's first entries
    std::optional<png_color_16> transparent = {}; ///< the one colour that is transparent
    std::optional<double> gamma = {};
};

/// The bytes of @p file. Throws std::runtime_error when the rows do not fill the picture; a
/// description that makes no PNG file ends the process, but indices may be beyond the palette.
Bytes Encode(const PngFile& file);

/// The file @p bytes with another size in its header, whose checksum is still right.
Bytes WithClaimedSize(Bytes bytes, unsigned int width, unsigned int height);

/// Writes @p bytes to the file @p path, which appears only when complete.
/// Throws std::runtime_error.
void WriteFile(const std::string& path, const Bytes& bytes);

} // namespace gltest
