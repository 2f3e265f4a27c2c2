// Where the sound of an MP3 file begins.
#pragma once

#include "File.h"

#include <cstddef>
#include <optional>
#include <span>

#include <sys/types.h>

namespace sound {

/// As much of a file is searched at once: more than twice what four frames take.
inline constexpr std::size_t searchedBytes = 65536;

/// The bytes of @p file at @p offset, as many as @p buffer takes; fewer at the end of the file,
/// none if it cannot be read.
std::span<const unsigned char> ReadAt(File& file, off_t offset, std::span<unsigned char> buffer);

/// The offset of the first frame, behind tags; none: it is not an MP3 file, or @p file has failed.
/// Reads a bounded number of bytes, however long the file is.
std::optional<off_t> FindFirstFrame(File& file);

} // namespace sound
