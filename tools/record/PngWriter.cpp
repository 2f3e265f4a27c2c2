// A picture as a PNG file.
#include "PngWriter.h"

#include "Picture.h"

#include <png.h>

#include <stdexcept>
#include <vector>

namespace record {

namespace {

/// Three bytes a pixel, in the same order of rows.
std::vector<unsigned char> WithoutAlpha(const Picture& picture) {
    std::vector<unsigned char> bytes(picture.pixels.size() / 4 * 3);
    for (std::size_t from = 0, to = 0; to < bytes.size(); from += 4, to += 3) {
        bytes[to] = picture.pixels[from];
        bytes[to + 1] = picture.pixels[from + 1];
        bytes[to + 2] = picture.pixels[from + 2];
    }
    return bytes;
}

} // namespace

void WritePng(const Picture& picture, const std::string& path) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    image.flags = PNG_IMAGE_FLAG_FAST; // a whole show of them is half as fast again
    const int rowsFromTheLowest = -3 * picture.width;
    if (png_image_write_to_file(&image, path.c_str(), 0, WithoutAlpha(picture).data(),
                                rowsFromTheLowest, nullptr) == 0) {
        throw std::runtime_error(image.message);
    }
}

} // namespace record
