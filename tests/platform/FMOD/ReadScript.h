// Scripts file reads of the library: the linker redirects its read(2) here (--wrap=read).
#pragma once

#include <cstddef>

namespace reads {

/// Nothing counted, nothing held, nothing fails.
void Reset();

/// The number of bytes read.
std::size_t BytesRead();

/// Reading fails (EIO) once @p bytes bytes have been read.
void FailAfter(std::size_t bytes);

/// Once @p bytes bytes have been read, further reads wait for Release.
void HoldAfter(std::size_t bytes);

/// Waits until a read waits for Release.
void AwaitHeld();

void Release();

} // namespace reads
