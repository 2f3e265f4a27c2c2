// PNG files made by the tests, with libpng's writer.
#include "PngFile.h"

#include <unistd.h>
#include <zlib.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace gltest {

namespace {

void Append(png_structp png, png_bytep data, std::size_t size) {
    auto* bytes = static_cast<Bytes*>(png_get_io_ptr(png));
    bytes->insert(bytes->end(), data, data + size);
}

struct Writer {
    Writer() = default;
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }

    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
};

void SetHeader(const Writer& writer, const PngFile& file) {
    png_set_IHDR(writer.png, writer.info, file.width, file.height, file.depth, file.colourType,
                 file.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!file.palette.empty()) {
        png_set_PLTE(writer.png, writer.info, file.palette.data(),
                     static_cast<int>(file.palette.size()));
    }
    if (!file.paletteAlpha.empty() || file.transparent) {
        png_set_tRNS(writer.png, writer.info, file.paletteAlpha.data(),
                     static_cast<int>(file.paletteAlpha.size()),
                     file.transparent ? &*file.transparent : nullptr);
    }
    if (file.gamma) {
        png_set_gAMA(writer.png, writer.info, *file.gamma);
    }
}

} // namespace

Bytes Encode(const PngFile& file) {
    Bytes bytes;
    const Writer writer;
    png_set_write_fn(writer.png, &bytes, Append, nullptr);
    png_set_compression_level(writer.png, file.compression);
    png_set_check_for_invalid_index(writer.png, 0);
    SetHeader(writer, file);
    png_write_info(writer.png, writer.info);
    const std::size_t rowBytes = png_get_rowbytes(writer.png, writer.info);
    if (file.rows.size() != rowBytes * file.height) {
        throw std::runtime_error("the rows do not fill the picture");
    }
    const int passes = file.interlaced ? png_set_interlace_handling(writer.png) : 1;
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t y = 0; y < file.height; ++y) {
            png_write_row(writer.png, file.rows.data() + y * rowBytes);
        }
    }
    png_write_end(writer.png, writer.info);
    return bytes;
}

Bytes WithClaimedSize(Bytes bytes, unsigned int width, unsigned int height) {
    png_save_uint_32(bytes.data() + 16, width);
    png_save_uint_32(bytes.data() + 20, height);
    const uLong checksum = crc32(0, bytes.data() + 12, 17); // over the chunk's name and contents
    png_save_uint_32(bytes.data() + 29, static_cast<png_uint_32>(checksum));
    return bytes;
}

void WriteFile(const std::string& path, const Bytes& bytes) {
    const std::string unfinished = path + "." + std::to_string(getpid());
    std::ofstream file(unfinished, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + unfinished);
    }
    std::filesystem::rename(unfinished, path);
}

} // namespace gltest
