// What the browser's audio does for a page: one audio context, which plays what is scheduled.
#pragma once

#include <cstdint>

// Defined in output.js. Times of the context are in seconds for which it has run; other
// times in ms of performance.now().
extern "C" {

struct SkovraAudioReport {
    double state;       ///< one of audioNone...
    double nowMs;       ///< when the report was made
    double currentTime; ///< up to which the context has rendered
    double stampTime;   ///< of the context, that was heard
    double stampMs;     ///< then
    double latency;     ///< from rendering to hearing, in seconds; 0: unknown
};

/// Opens the context if there is none, and lets it play as soon as the page may.
void SkovraAudioOpen(double rateHz, double latencySeconds);

/// Everything in it is finite; what the browser does not tell is 0.
void SkovraAudioRead(SkovraAudioReport* report);

/// The time now, in ms.
double SkovraAudioNow(void);

/// Schedules the @p count frames (left, right) at @p frames, which it copies, for @p time.
void SkovraAudioPlay(const float* frames, std::int32_t count, double time);

/// Drops, and ends, what is scheduled for @p time or later.
void SkovraAudioStop(double time);

/// Closes the context; no more turns follow.
void SkovraAudioClose(void);
}

namespace sound {

inline constexpr double audioNone = 0.0;
inline constexpr double audioSuspended = 1.0;
inline constexpr double audioStarting = 2.0; ///< the viewer has let it play
inline constexpr double audioRunning = 3.0;

} // namespace sound
