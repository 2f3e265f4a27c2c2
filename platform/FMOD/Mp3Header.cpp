// The four bytes that begin each frame of an MP3 stream, and where its first frame is.
#include "Mp3Header.h"

#include <algorithm>
#include <array>

namespace sound {

// MPEG-1, then MPEG-2 and 2.5, in kbit/s.
static constexpr int bitRates[2][15] = {
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
};
static constexpr int rates[3] = {44100, 48000, 32000};

static constexpr std::uint32_t sameInAStream = 0xFFFE0C00; // sync, version, layer, sample rate
static constexpr std::size_t longestFreeFrame = 8192;

std::optional<Mp3Header> ParseMp3Header(std::span<const unsigned char> bytes) {
    const std::uint32_t bits = static_cast<std::uint32_t>(bytes[0]) << 24 |
                               static_cast<std::uint32_t>(bytes[1]) << 16 |
                               static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
    const std::uint32_t version = bits >> 19 & 3; // 0: MPEG-2.5, 2: MPEG-2, 3: MPEG-1
    const std::uint32_t layer = bits >> 17 & 3;   // 1: layer III
    const std::uint32_t bitRate = bits >> 12 & 15;
    const std::uint32_t rate = bits >> 10 & 3;
    if (bits >> 21 != 0x7FF || version == 1 || layer != 1 || bitRate == 15 || rate == 3) {
        return std::nullopt;
    }
    const bool first = version == 3;
    const int rateHz = rates[rate] / (first ? 1 : version == 2 ? 2 : 4);
    const int bitsPerSecond = bitRates[first ? 0 : 1][bitRate] * 1000;
    const int padding = bits >> 9 & 1;
    const int frameBytes = bitRate == 0 ? 0 : (first ? 144 : 72) * bitsPerSecond / rateHz + padding;
    return Mp3Header{bits, rateHz, frameBytes};
}

static bool Continues(const Mp3Header& header, std::span<const unsigned char> bytes,
                      std::size_t at) {
    if (at + 4 > bytes.size()) {
        return false;
    }
    const auto next = ParseMp3Header(bytes.subspan(at));
    return next && ((next->bits ^ header.bits) & sameInAStream) == 0 &&
           (next->frameBytes == 0) == (header.frameBytes == 0);
}

static bool BeginsFreeFormat(const Mp3Header& header, std::span<const unsigned char> bytes,
                             std::size_t at) {
    for (std::size_t length = 4; length <= longestFreeFrame; ++length) {
        if (!Continues(header, bytes, at + length)) {
            continue;
        }
        // Padding makes a frame one byte longer or shorter than the one before.
        for (std::size_t third = at + 2 * length - 1; third <= at + 2 * length + 1; ++third) {
            if (Continues(header, bytes, third)) {
                return true;
            }
        }
    }
    return false;
}

std::optional<std::size_t> FindMp3Stream(std::span<const unsigned char> bytes) {
    for (std::size_t at = 0; at + 4 <= bytes.size(); ++at) {
        const auto header = ParseMp3Header(bytes.subspan(at));
        if (!header) {
            continue;
        }
        const bool begins =
            header->frameBytes == 0
                ? BeginsFreeFormat(*header, bytes, at)
                : Continues(*header, bytes, at + static_cast<std::size_t>(header->frameBytes));
        if (begins) {
            return at;
        }
    }
    return std::nullopt;
}

std::size_t Id3TagBytes(std::span<const unsigned char> bytes) {
    static constexpr std::array<unsigned char, 3> mark = {'I', 'D', '3'};
    if (!std::equal(mark.begin(), mark.end(), bytes.begin())) {
        return 0;
    }
    std::size_t length = 0;
    for (std::size_t i = 6; i < 10; ++i) {
        length = length << 7 | (bytes[i] & 0x7FU);
    }
    const std::size_t footer = (bytes[5] & 0x10U) != 0 ? 10 : 0;
    return 10 + length + footer;
}

} // namespace sound
