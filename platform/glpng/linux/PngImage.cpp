// PNG file to pixels in memory, with libpng.
#include "PngImage.h"

#include <png.h>

#include <csetjmp>
#include <new>

namespace glpng {

namespace {

[[noreturn]] void LeaveQuietly(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

bool IsNeeded(png_uint_32 chunk) {
    constexpr png_uint_32 transparency = 0x74524e53; // tRNS
    constexpr png_uint_32 pixels = 0x49444154;       // IDAT, where errors are no warnings
    constexpr png_uint_32 ancillaryBit = 0x20000000;
    return chunk == transparency || ((chunk & ancillaryBit) == 0 && chunk != pixels);
}

// Which damage is only a warning differs between versions of libpng.
void Warn(png_structp png, png_const_charp) {
    if (IsNeeded(png_get_io_chunk_type(png))) {
        png_longjmp(png, 1);
    }
}

struct Reader {
    Reader() = default;
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }

    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, LeaveQuietly, Warn);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
};

// No gamma correction: the file's values are uploaded unchanged.
void AskForEightBitColour(png_structp png) {
    png_set_palette_to_rgb(png);
    png_set_expand_gray_1_2_4_to_8(png);
    png_set_tRNS_to_alpha(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
}

void ReadRows(png_structp png, int passes, const PngImage& image) {
    for (int pass = 0; pass < passes; ++pass) {
        png_bytep row = image.pixels.get();
        for (unsigned int y = 0; y < image.height; ++y, row += image.RowBytes()) {
            png_read_row(png, row, nullptr);
        }
    }
}

// An error inside libpng jumps to setjmp, past destructors: the two functions that call setjmp own
// nothing, and change no local variable after it.

bool ReadHeader(const Reader& reader, std::FILE* file, unsigned int maxSide, PngImage& image) {
    if (setjmp(png_jmpbuf(reader.png)) != 0) {
        return false;
    }
    // Skips ancillary chunks that no pixel depends on.
    png_set_keep_unknown_chunks(reader.png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_init_io(reader.png, file);
    png_set_user_limits(reader.png, maxSide, maxSide);
    png_read_info(reader.png, reader.info);
    image.width = png_get_image_width(reader.png, reader.info);
    image.height = png_get_image_height(reader.png, reader.info);
    image.depth = png_get_bit_depth(reader.png, reader.info);
    image.hasAlpha = (png_get_color_type(reader.png, reader.info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                     png_get_valid(reader.png, reader.info, PNG_INFO_tRNS) != 0;
    return true;
}

bool ReadPixels(const Reader& reader, const PngImage& image) {
    if (setjmp(png_jmpbuf(reader.png)) != 0) {
        return false;
    }
    AskForEightBitColour(reader.png);
    const int passes = png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);
    if (png_get_rowbytes(reader.png, reader.info) != image.RowBytes()) {
        return false;
    }
    ReadRows(reader.png, passes, image);
    png_read_end(reader.png, nullptr);
    return true;
}

bool Allocate(PngImage& image) {
    if (image.RowBytes() > maxPixelBytes / image.height) {
        return false;
    }
    image.pixels.reset(new (std::nothrow) unsigned char[image.RowBytes() * image.height]);
    return image.pixels != nullptr;
}

} // namespace

bool DecodePng(std::FILE* file, unsigned int maxSide, PngImage& image) {
    const Reader reader;
    return reader.info != nullptr && ReadHeader(reader, file, maxSide, image) && Allocate(image) &&
           ReadPixels(reader, image);
}

} // namespace glpng
