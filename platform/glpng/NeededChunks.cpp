#include "NeededChunks.h"

#include "Checksum.h"
#include "Chunks.h"

#include <algorithm>
#include <array>

namespace glpng {

static constexpr std::size_t headBytes = 8;
static constexpr std::size_t checksumBytes = 4;
static constexpr std::uint32_t longestChunk = 0x7FFFFFFF - checksumBytes; // on 32 bits, too

static constexpr std::uint32_t ancillaryBit = 0x20000000;

static bool IsNeeded(std::uint32_t name) {
    return (name & ancillaryBit) == 0 || name == transparencyChunk;
}

bool NeededChunks::Read(unsigned char* bytes, std::size_t count) {
    if (left == 0) {
        return count == headBytes && ReadHead(bytes);
    }
    if (count > left || std::fread(bytes, 1, count, file) != count) {
        return false;
    }
    left -= count;
    if (begun && left == 0) {
        return count == checksumBytes && BigEndian(bytes) == checksum;
    }
    checksum = ExtendedChecksum(checksum, bytes, count);
    return true;
}

bool NeededChunks::ReadHead(unsigned char* head) {
    for (;;) {
        if (std::fread(head, 1, headBytes, file) != headBytes) {
            return false;
        }
        const std::uint32_t length = BigEndian(head);
        if (length > longestChunk) {
            return false;
        }
        left = length + checksumBytes;
        name = BigEndian(head + 4);
        checksum = ExtendedChecksum(0, head + 4, 4);
        if (!Enter()) {
            return false;
        }
        if (IsNeeded(name)) {
            return true;
        }
        if (std::fseek(file, static_cast<long>(left), SEEK_CUR) != 0) {
            return false;
        }
    }
}

bool NeededChunks::Enter() {
    // libpng accepts a chunk that it does not know in front of the header.
    if ((!begun && name != headerChunk) || (name == pixelsChunk && pixelsEnded)) {
        return false;
    }
    begun = true;
    pixelsEnded = pixelsBegun && name != pixelsChunk;
    pixelsBegun = pixelsBegun || name == pixelsChunk;
    return true;
}

bool NeededChunks::ReadRest() {
    std::array<unsigned char, 4096> bytes = {};
    for (;;) {
        while (left > 0) {
            const std::size_t data = left > checksumBytes ? left - checksumBytes : left;
            if (!Read(bytes.data(), std::min(data, bytes.size()))) {
                return false;
            }
        }
        if (name == endChunk) {
            return true;
        }
        if (!ReadHead(bytes.data()) ||
            (name == endChunk ? left != checksumBytes : name != pixelsChunk)) {
            return false;
        }
    }
}

} // namespace glpng
