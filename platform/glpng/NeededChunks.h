// What a decoder gets to see of a PNG file.
#pragma once

#include "Chunks.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace glpng {

/// A PNG file without the chunks that no pixel depends on: they are neither read nor stored,
/// whatever length they claim. What decoders make of them differs, even between versions of libpng,
/// and so does what they make of the chunks behind the picture, which are therefore checked here.
class NeededChunks {
public:
    /// Of the file that starts at the position of @p openFile.
    explicit NeededChunks(std::FILE* openFile) : file(openFile) {}

    /// The next @p count bytes, as libpng would ask for them: the signature; the length and name of
    /// a chunk together; some of its data; its checksum. False at the end of the file, where a
    /// checksum is wrong, where the first chunk is not the header, and where pixels go on after
    /// another chunk.
    bool Read(unsigned char* bytes, std::size_t count);

    /// Once the picture is complete: whether all that follows it may.
    bool ReadRest();

private:
    bool ReadHead(unsigned char* head);
    bool Enter();

    std::FILE* file;
    std::size_t left = signatureBytes; // to read of the signature or chunk
    std::uint32_t name = 0;            // of the chunk
    std::uint32_t checksum = 0;        // of what was read of it
    bool begun = false;
    bool pixelsBegun = false;
    bool pixelsEnded = false;
};

} // namespace glpng
