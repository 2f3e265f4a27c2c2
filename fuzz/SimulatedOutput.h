// The live output's clock and device changes, in a time that the fuzzer controls. What each call
// makes of the timeline's state is compared with the table in docs/sound.md.
#pragma once

#include <cstdint>

namespace fuzz {

/// Call before an output is started: no device, and a decoder that keeps up.
void ResetOutput();

/// Lets @p ms ms pass: the device requests the frames that it plays, the watchdog runs.
void PassTime(int ms);

/// Lets time pass without any callbacks, as when the machine sleeps.
void Suspend(int ms);

/// Opens a device that plays @p rateHz frames a second; closes the previous one.
void OpenDevice(std::int64_t rateHz);

/// The same for a graph that requests @p cycleFrames a cycle and reports exact positions: the
/// frames of a cycle are heard @p delayFrames after its start. Cycles missed while it hung are
/// skipped.
void OpenGraph(std::int64_t rateHz, std::int32_t cycleFrames, std::int64_t delayFrames);

/// The device repeats the position of its latest cycle, of @p cycleFrames, as if it were new; 0:
/// it stops doing so.
void RepeatPosition(std::int64_t cycleFrames);

/// The device requests nothing for the next @p ms ms.
void HangDevice(int ms);

void FailDevice();

/// The device reports a position that is off by @p frames (may be negative).
void MisreportBy(std::int64_t frames);

/// Whether the decoder causes underruns, or is waited for.
void LetDecoderLag(bool lag);

/// While the next frames are rendered, other threads use the timeline: @p who says which.
void InterruptNextRender(int who);

/// The position last reported to the library, in frames.
std::int64_t LastHeardFrames();

} // namespace fuzz
