// What the browser's decoder does for a page.
#pragma once

#include <cstdint>

// Defined in decoder.js; a music is named by the number that Begin gives it.
extern "C" {

/// Has the browser decode the @p size bytes at @p bytes, which it copies, at @p rateHz.
int SkovraMusicBegin(const unsigned char* bytes, std::uint32_t size, std::uint32_t rateHz);

/// How many frames it has; -1: not decoded yet, -2: the browser refuses it.
std::int32_t SkovraMusicFrames(int music);

/// Copies the @p count frames from @p first on, which it has, to @p frames (left, right).
void SkovraMusicCopy(int music, std::int32_t first, std::int32_t count, float* frames);

/// Ends the use of @p music, decoded or not.
void SkovraMusicForget(int music);
}
