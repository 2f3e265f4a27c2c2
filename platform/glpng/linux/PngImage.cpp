// PNG file to pixels in memory, with libpng.
#include "PngImage.h"

#include "Chunks.h"
#include "NeededChunks.h"
#include "TextureImage.h"

#include <png.h>

#include <csetjmp>
#include <cstddef>
#include <new>

namespace glpng {

namespace {

// libpng inflates whatever follows the picture in its IDAT chunks, to a thousand times its size.
constexpr std::size_t mostReadBehindPicture = 16384;

struct Source {
    NeededChunks chunks;
    unsigned int height = 0; // of the picture, pixels
    std::size_t readBehindPicture = 0;
    bool isDone = false; // libpng was stopped, with the picture complete
};

bool IsPictureComplete(png_structp png, const Source& source) {
    constexpr int passesOfInterlaced = 7;
    return png_get_current_row_number(png) == source.height ||
           png_get_current_pass_number(png) == passesOfInterlaced;
}

void ReadNeeded(png_structp png, png_bytep bytes, std::size_t count) {
    Source& source = *static_cast<Source*>(png_get_io_ptr(png));
    if (source.height != 0 && IsPictureComplete(png, source)) {
        source.readBehindPicture += count;
        source.isDone = source.readBehindPicture > mostReadBehindPicture;
    }
    if (source.isDone || !source.chunks.Read(bytes, count)) {
        png_longjmp(png, 1);
    }
}

[[noreturn]] void LeaveQuietly(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

// Which damage is only a warning differs between versions of libpng. It also warns of what follows
// the picture in its IDAT chunks.
void Warn(png_structp png, png_const_charp) {
    if (png_get_io_chunk_type(png) != pixelsChunk) {
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

bool HasPalette(const Reader& reader) {
    return png_get_color_type(reader.png, reader.info) == PNG_COLOR_TYPE_PALETTE;
}

// No gamma correction: the file's values are uploaded unchanged. Palette indices stay indices.
void AskForEightBits(const Reader& reader) {
    if (HasPalette(reader)) {
        png_set_packing(reader.png);
        return;
    }
    png_set_expand_gray_1_2_4_to_8(reader.png);
    png_set_tRNS_to_alpha(reader.png);
    png_set_scale_16(reader.png);
    png_set_gray_to_rgb(reader.png);
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

bool ReadHeader(const Reader& reader, Source& source, unsigned int maxSide, PngImage& image) {
    if (setjmp(png_jmpbuf(reader.png)) != 0) {
        return false;
    }
    png_set_read_fn(reader.png, &source, ReadNeeded);
    png_set_user_limits(reader.png, maxSide, maxSide);
    png_read_info(reader.png, reader.info);
    image.width = png_get_image_width(reader.png, reader.info);
    image.height = png_get_image_height(reader.png, reader.info);
    image.depth = png_get_bit_depth(reader.png, reader.info);
    image.hasAlpha = (png_get_color_type(reader.png, reader.info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                     png_get_valid(reader.png, reader.info, PNG_INFO_tRNS) != 0;
    return true;
}

bool ReadPixels(const Reader& reader, Source& source, const PngImage& image) {
    if (setjmp(png_jmpbuf(reader.png)) != 0) {
        return source.isDone;
    }
    source.height = image.height;
    AskForEightBits(reader);
    const int passes = png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);
    if (png_get_rowbytes(reader.png, reader.info) !=
        (HasPalette(reader) ? image.width : image.RowBytes())) {
        return false;
    }
    ReadRows(reader.png, passes, image);
    return true;
}

// Replaces the indices that each row begins with by colours, from the last on. libpng would take
// colours for indices beyond the palette, too. False where there is one.
bool LookUpColours(const Reader& reader, const PngImage& image) {
    png_colorp palette = nullptr;
    png_bytep alpha = nullptr;
    int colourCount = 0;
    int alphaCount = 0;
    png_get_PLTE(reader.png, reader.info, &palette, &colourCount);
    png_get_tRNS(reader.png, reader.info, &alpha, &alphaCount, nullptr);
    const std::size_t pixelBytes = image.hasAlpha ? 4 : 3;
    png_bytep row = image.pixels.get();
    for (unsigned int y = 0; y < image.height; ++y, row += image.RowBytes()) {
        for (std::size_t x = image.width; x-- > 0;) {
            const int index = row[x];
            if (index >= colourCount) {
                return false;
            }
            png_bytep pixel = row + x * pixelBytes;
            pixel[0] = palette[index].red;
            pixel[1] = palette[index].green;
            pixel[2] = palette[index].blue;
            if (image.hasAlpha) {
                pixel[3] = index < alphaCount ? alpha[index] : 255;
            }
        }
    }
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
    Source source = {.chunks = NeededChunks(file)};
    return reader.info != nullptr && ReadHeader(reader, source, maxSide, image) &&
           Allocate(image) && ReadPixels(reader, source, image) && source.chunks.ReadRest() &&
           (!HasPalette(reader) || LookUpColours(reader, image));
}

} // namespace glpng
