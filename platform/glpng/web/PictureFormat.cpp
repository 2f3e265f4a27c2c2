#include "PictureFormat.h"

#include "Chunks.h"
#include "NeededChunks.h"
#include "TextureImage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace glpng {

namespace {

constexpr std::array<unsigned char, signatureBytes> signature = {0x89, 'P',  'N',  'G',
                                                                 '\r', '\n', 0x1A, '\n'};

constexpr unsigned int palette = 3; // a colour type, of these bits:
constexpr unsigned int colourBit = 2;
constexpr unsigned int alphaBit = 4;

constexpr std::size_t maxColours = 256;

using Bytes = std::vector<unsigned char>;

bool IsDepthOf(unsigned int colourType, unsigned int depth) {
    switch (colourType) {
    case 0:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    case palette:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8;
    case colourBit:
    case alphaBit:
    case colourBit | alphaBit:
        return depth == 8 || depth == 16;
    default:
        return false;
    }
}

/// The chunks up to the pixels.
class Beginning {
public:
    Beginning(unsigned int newMaxSide, PictureFormat& newFormat)
        : maxSide(newMaxSide), format(newFormat) {}

    /// Whether a chunk may be as long, where it is.
    bool MayFollow(std::uint32_t name, std::size_t bytes) const {
        switch (name) {
        case headerChunk:
            return !hasHeader && bytes == 13;
        case paletteChunk:
            return colours == 0 && !hasTransparency && MayHavePalette() && bytes > 0 &&
                   bytes % 3 == 0 && bytes <= 3 * maxColours;
        case transparencyChunk:
            return !format.hasAlpha && bytes > 0 && bytes == TransparencyBytes(bytes);
        case pixelsChunk:
            return colourType != palette || colours > 0;
        default:
            return false; // needed, and not known
        }
    }

    /// False: the header says what cannot be.
    bool Take(std::uint32_t name, const Bytes& data) {
        if (name == headerChunk) {
            hasHeader = true;
            return TakeHeader(data.data());
        }
        if (name == paletteChunk) {
            // What a pixel cannot name is not used.
            colours = std::min(data.size() / 3,
                               colourType == palette ? std::size_t{1} << format.depth : maxColours);
        } else {
            hasTransparency = format.hasAlpha = true;
        }
        return true;
    }

private:
    // Beside colours it is only a proposal.
    bool MayHavePalette() const { return (colourType & colourBit) != 0; }

    std::size_t TransparencyBytes(std::size_t bytes) const {
        switch (colourType) {
        case 0:
            return 2;
        case colourBit:
            return 6;
        default:
            return std::min(bytes, colours);
        }
    }

    bool TakeHeader(const unsigned char* data) {
        format.width = BigEndian(data);
        format.height = BigEndian(data + 4);
        format.depth = data[8];
        colourType = data[9];
        format.hasAlpha = (colourType & alphaBit) != 0;
        const bool isKnown = data[10] == 0 && data[11] == 0 && data[12] <= 1;
        return isKnown && IsDepthOf(colourType, format.depth) && format.width > 0 &&
               format.height > 0 && format.width <= maxSide && format.height <= maxSide;
    }

    unsigned int maxSide;
    PictureFormat& format;
    unsigned int colourType = 0;
    bool hasHeader = false;
    bool hasTransparency = false;
    std::size_t colours = 0; // in the palette
};

bool ReadSignature(NeededChunks& chunks) {
    std::array<unsigned char, signatureBytes> bytes = {};
    return chunks.Read(bytes.data(), bytes.size()) && bytes == signature;
}

bool ReadToPixels(NeededChunks& chunks, Beginning& beginning) {
    for (;;) {
        std::array<unsigned char, 8> head = {};
        if (!chunks.Read(head.data(), head.size())) {
            return false;
        }
        const std::size_t length = BigEndian(head.data());
        const std::uint32_t name = BigEndian(head.data() + 4);
        if (!beginning.MayFollow(name, length)) {
            return false;
        }
        if (name == pixelsChunk) {
            return true;
        }
        Bytes data(length);
        std::array<unsigned char, 4> checksum = {};
        if (!chunks.Read(data.data(), length) || !chunks.Read(checksum.data(), checksum.size()) ||
            !beginning.Take(name, data)) {
            return false;
        }
    }
}

} // namespace

bool ReadPictureFormat(std::FILE* file, unsigned int maxSide, PictureFormat& format) {
    NeededChunks chunks(file);
    Beginning beginning(maxSide, format);
    if (!ReadSignature(chunks) || !ReadToPixels(chunks, beginning) || !chunks.ReadRest()) {
        return false;
    }
    const std::uint64_t rowBytes = std::uint64_t{format.width} * (format.hasAlpha ? 4 : 3);
    return rowBytes <= std::uint64_t{maxPixelBytes} / format.height;
}

} // namespace glpng
