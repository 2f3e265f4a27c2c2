// What an MP3 file begins with: tags, padding, its first frame.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace sound {

/// As many bytes of a tag as TagBytes looks at.
inline constexpr std::size_t tagHeadBytes = 16;

/// Bytes of the tag (ID3v2, APEv2) that @p bytes (at least tagHeadBytes) begin with; 0: no tag.
std::size_t TagBytes(std::span<const unsigned char> bytes);

/// Where the first frame of an MP3 file is in @p bytes, which follow its tags; none: it is not an
/// MP3 file. Two frames have to begin the file, or follow zeros: padding. After anything else,
/// which may be the rest of a frame where a recording was begun or cut, four frames have to follow
/// within the length of one. Other formats that MP3 frames may be stored in are told by what they
/// begin with.
std::optional<std::size_t> FindFirstMp3Frame(std::span<const unsigned char> bytes);

} // namespace sound
