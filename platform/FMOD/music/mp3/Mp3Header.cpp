#include "Mp3Header.h"

#include <algorithm>

namespace sound {

// MPEG-1, then MPEG-2 and 2.5, in kbit/s.
static constexpr int bitRates[2][15] = {
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
};
static constexpr int rates[3] = {44100, 48000, 32000};

static constexpr std::uint32_t sameInAStream = 0xFFFE0C00; // sync, version, layer, sample rate
static constexpr std::size_t shortestFreeFrame = 13;       // header and side information alone

std::optional<Mp3Header> ParseMp3Header(std::span<const unsigned char> bytes) {
    if (bytes[0] != 0xFF) {
        return std::nullopt;
    }
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
    Mp3Header header = {bits, rateHz, 0};
    if (bitRate != 0) {
        header.frameBytes = (first ? 144 : 72) * bitsPerSecond / rateHz + header.Padding();
    }
    return header;
}

// Whether @p next may follow @p header within a stream.
static bool IsOfSameStream(const Mp3Header& next, const Mp3Header& header) {
    return ((next.bits ^ header.bits) & sameInAStream) == 0 &&
           (next.frameBytes == 0) == (header.frameBytes == 0);
}

// Whether @p count frames of one stream follow each other in @p bytes, each where the one before
// ends. @p freeBytes: of a free-format frame without its padding.
static bool FollowEachOther(std::span<const unsigned char> bytes, Mp3Header header,
                            std::size_t freeBytes, int count) {
    std::size_t at = 0;
    for (int number = 1; number < count; ++number) {
        at += header.frameBytes != 0 ? static_cast<std::size_t>(header.frameBytes)
                                     : freeBytes + static_cast<std::size_t>(header.Padding());
        const auto next = at + 4 <= bytes.size() ? ParseMp3Header(bytes.subspan(at)) : std::nullopt;
        if (!next || !IsOfSameStream(*next, header)) {
            return false;
        }
        header = *next;
    }
    return true;
}

// The length of such frames follows only from the distance to the next: the first one, which is
// where libmpg123 takes it from, too. 0: there is none.
static std::size_t FreeFrameBytes(std::span<const unsigned char> bytes, const Mp3Header& header) {
    const auto padding = static_cast<std::size_t>(header.Padding());
    const std::size_t end = std::min(bytes.size(), longestMp3Frame + padding + 4);
    for (std::size_t at = shortestFreeFrame + padding; at + 4 <= end; ++at) {
        const auto next = ParseMp3Header(bytes.subspan(at));
        if (next && IsOfSameStream(*next, header)) {
            return at - padding;
        }
    }
    return 0;
}

static bool BeginsStream(std::span<const unsigned char> bytes, const Mp3Header& header,
                         int frameCount) {
    if (header.frameBytes != 0) {
        return FollowEachOther(bytes, header, 0, frameCount);
    }
    const std::size_t length = FreeFrameBytes(bytes, header);
    return length != 0 && FollowEachOther(bytes, header, length, std::max(frameCount, 3));
}

std::optional<std::size_t> FindMp3Stream(std::span<const unsigned char> bytes, int frameCount) {
    for (std::size_t at = 0; at + 4 <= bytes.size(); ++at) {
        const auto here = bytes.subspan(at);
        const auto header = ParseMp3Header(here);
        if (header && BeginsStream(here, *header, frameCount)) {
            return at;
        }
    }
    return std::nullopt;
}

} // namespace sound
