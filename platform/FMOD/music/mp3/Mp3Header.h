// The four bytes that begin each frame of an MP3 stream, and where a stream begins.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace sound {

/// The limit for the length of a frame in free format, without its padding; others are shorter.
inline constexpr std::size_t longestMp3Frame = 8192;

struct Mp3Header {
    std::uint32_t bits;
    int rateHz;
    int frameBytes; ///< 0: free format, the header does not say

    /// By how many bytes this frame is longer than others of its bit rate.
    int Padding() const { return static_cast<int>(bits >> 9 & 1); }
};

/// The MPEG audio layer III header that @p bytes (at least 4) begin with, if they do.
std::optional<Mp3Header> ParseMp3Header(std::span<const unsigned char> bytes);

/// Where in @p bytes an MP3 stream begins: at the first of @p frameCount contiguous frames (at
/// least 2; in free format 3) of one stream.
std::optional<std::size_t> FindMp3Stream(std::span<const unsigned char> bytes, int frameCount);

} // namespace sound
