#include "Mp3Beginning.h"

#include "Mp3Header.h"

#include <algorithm>
#include <string_view>

namespace sound {

using namespace std::string_view_literals;

static constexpr int framesToBegin = 2;
static constexpr int framesAfterOthers = 4;

struct Mark {
    std::size_t at;
    std::string_view bytes;
};

static constexpr Mark otherFormats[] = {
    {0, "RIFF"},             // WAVE, AVI
    {0, "RIFX"},             // the same, big-endian
    {0, "RF64"},             // the same, longer than 4 GiB
    {0, "riff"},             // Wave64
    {0, "FORM"},             // AIFF
    {0, "caff"},             // Core Audio
    {0, ".snd"},             // AU
    {0, "fLaC"},             // FLAC
    {0, "OggS"},             // Ogg
    {0, "FLV"},              // Flash video
    {0, ".RMF"},             // RealMedia
    {0, "\x1A\x45\xDF\xA3"}, // Matroska, WebM
    {0, "\x30\x26\xB2\x75"}, // ASF: WMA, WMV
    {0, "\0\0\1\xBA"sv},     // MPEG programme stream
    {4, "ftyp"},             // MP4, QuickTime, and what the latter may begin with
    {4, "free"},             //
    {4, "mdat"},             //
    {4, "moov"},             //
    {4, "skip"},             //
    {4, "wide"},             //
};

static bool Has(std::span<const unsigned char> bytes, const Mark& mark) {
    return bytes.size() >= mark.at + mark.bytes.size() &&
           std::equal(mark.bytes.begin(), mark.bytes.end(),
                      bytes.begin() + static_cast<std::ptrdiff_t>(mark.at),
                      [](char one, unsigned char other) {
                          return static_cast<unsigned char>(one) == other;
                      });
}

std::size_t TagBytes(std::span<const unsigned char> bytes) {
    std::size_t length = 0;
    if (Has(bytes, {0, "ID3"})) {
        for (std::size_t i = 6; i < 10; ++i) {
            length = length << 7 | (bytes[i] & 0x7FU);
        }
        const std::size_t footer = (bytes[5] & 0x10U) != 0 ? 10 : 0;
        return 10 + length + footer;
    }
    if (Has(bytes, {0, "APETAGEX"})) {
        for (std::size_t i = 15; i >= 12; --i) {
            length = length << 8 | bytes[i];
        }
        return 32 + length;
    }
    return 0;
}

std::optional<std::size_t> FindFirstMp3Frame(std::span<const unsigned char> bytes) {
    if (std::any_of(std::begin(otherFormats), std::end(otherFormats),
                    [bytes](const Mark& mark) { return Has(bytes, mark); })) {
        return std::nullopt;
    }
    const auto first =
        std::find_if(bytes.begin(), bytes.end(), [](auto byte) { return byte != 0; });
    const auto padding = static_cast<std::size_t>(first - bytes.begin());
    const auto padded = bytes.subspan(padding);
    if (FindMp3Stream(padded, framesToBegin) == 0U) {
        return padding;
    }
    const auto found = FindMp3Stream(padded, framesAfterOthers);
    return found && *found <= longestMp3Frame ? std::optional(padding + *found) : std::nullopt;
}

} // namespace sound
