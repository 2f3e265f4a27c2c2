// What happens when the library reads a file: the linker leads its read(2) here (--wrap=read).
#pragma once

#include <cstddef>

namespace reads {

/// From the beginning again: nothing counted, nothing held up, nothing fails.
void Reset();

/// How many bytes were read.
std::size_t BytesRead();

/// Reading fails (EIO) once @p bytes bytes have been read.
void FailAfter(std::size_t bytes);

/// Once @p bytes bytes have been read, whoever reads on waits for Release.
void HoldAfter(std::size_t bytes);

/// Waits until someone waits for Release.
void AwaitHeld();

void Release();

} // namespace reads
