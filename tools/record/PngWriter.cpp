#include "PngWriter.h"

#include "Picture.h"

#include <png.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace record {

namespace {

struct Close {
    void operator()(std::FILE* owned) const { std::fclose(owned); }
};

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
    errno = 0; // the system's error texts are better than libpng's
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "wbe"));
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    image.flags = PNG_IMAGE_FLAG_FAST; // a show has 1321 frames
    const int rowsFromTheLowest = -3 * picture.width;
    const bool written =
        file != nullptr &&
        png_image_write_to_stdio(&image, file.get(), 0, WithoutAlpha(picture).data(),
                                 rowsFromTheLowest, nullptr) != 0 &&
        std::fflush(file.get()) == 0;
    if (!written) {
        throw std::runtime_error(errno != 0 ? std::generic_category().message(errno)
                                            : image.message);
    }
}

} // namespace record
