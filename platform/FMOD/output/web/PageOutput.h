// The output of a page: its audio context, or silence in real time while that does not play.
#pragma once

#include "ContextClock.h"
#include "Output.h"
#include "Schedule.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace sound {

/// All on the page's only thread, which may be busy for longer than what is scheduled: the music
/// then waits, and the clock with it. Nothing of it is left out.
class PageOutput {
public:
    /// Opens the audio context.
    explicit PageOutput(const Source& source);
    PageOutput(const PageOutput&) = delete;
    PageOutput& operator=(const PageOutput&) = delete;
    ~PageOutput();

    /// About every 50 ms, and whenever the context ends a chunk or changes: schedules what is due.
    void Turn();

    /// As AwaitDevice. Music begins with the next turn.
    void Await();

    /// As sound::HeardFrames.
    std::int64_t HeardFrames();

    /// Whether the context plays, or will with the next turn.
    bool IsSounding() const { return sounding; }

private:
    static constexpr std::int32_t chunkFrames = 4096;

    void Listen();
    void TakeOver(std::int64_t nowNs);
    void FallSilent(std::int64_t nowNs);
    void Fill(std::int64_t nowNs);
    void PlayFirstChunk();
    void PlayChunk();
    void FadeIn();
    void AdvanceSilence(std::int64_t nowNs);
    void Discard(std::int64_t upTo);
    void Hold(std::int64_t nowNs);
    void Resume(std::int64_t nowNs);
    void Notify(std::int64_t nowNs);
    std::int64_t SilentFrame(std::int64_t nowNs) const;
    std::int64_t Now(std::int64_t nowNs) const;

    Source source;
    ContextClock clock;
    Schedule schedule;
    std::int64_t handedOut = 0;
    std::int64_t latest = 0; // answer
    bool wanted = false;     // something has been or is about to be played
    bool sounding = false;
    double state = 0.0;
    std::int64_t openedNs; // when the context was last asked for

    // While it is silent:
    std::int64_t beginNs;         // when its frame 0 was, or would have been, heard
    bool holding = false;         // because the context is starting,
    std::int64_t heldFrame = 0;   // at this frame,
    std::int64_t holdUntilNs = 0; // so long at most
    std::int64_t silentNs = 0;    // since when
    bool notified = false;
    bool discardedSound = false; // in the latest frames discarded

    std::array<float, 2 * std::size_t{chunkFrames}> chunk;
    float gain = 1.0F; // less while it fades in
};

} // namespace sound
