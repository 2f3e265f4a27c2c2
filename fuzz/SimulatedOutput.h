// The live output's clock and its changes between devices, in a time that the fuzzer sets.
#pragma once

#include <cstdint>

namespace fuzz {

/// Before an output is started: no device, and a decoder that keeps up.
void ResetOutput();

/// Lets @p ms ms pass: a device asks for what it plays, the watching thread looks.
void PassTime(int ms);

/// Time passes without anybody being asked for anything, as when the machine sleeps.
void Suspend(int ms);

/// Opens a device that plays @p rateHz frames a second; the one before is closed.
void OpenDevice(std::int64_t rateHz);

/// The same of a graph that asks for @p cycleFrames a cycle, and knows exactly what is heard: what
/// it takes in a cycle, @p delayFrames after that cycle's time. What it missed while it hung it
/// leaves out.
void OpenGraph(std::int64_t rateHz, std::int32_t cycleFrames, std::int64_t delayFrames);

/// The device repeats the position of the latest of cycles of @p cycleFrames as if it were new; 0:
/// it does not any more.
void RepeatPosition(std::int64_t cycleFrames);

/// The device asks for nothing for the next @p ms ms that pass.
void HangDevice(int ms);

void FailDevice();

/// The device says that it has played @p frames more than it has (it may be negative).
void LieBy(std::int64_t frames);

/// Whether what is not decoded in time is left out, or else waited for.
void LetDecoderLag(bool lag);

/// What the library was last told to be heard, in frames.
std::int64_t LastHeardFrames();

} // namespace fuzz
