// A file decoded ahead of the output, in the background.
#pragma once

#include "Decoder.h"
#include "Output.h"
#include "Ring.h"

#include <FMOD/FMOD.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

namespace sound {

class Background;

class Stream {
public:
    enum class Supply : int { Decoding, Ended, Broken };

    /// Opens the file at @p path and starts to decode it. Throws std::bad_alloc or
    /// std::system_error when out of memory or threads.
    static FMOD_RESULT Open(const char* path, std::unique_ptr<Stream>& stream);

    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    ~Stream();

    /// Back to the beginning, wherever the decoder is; only while nobody reads.
    FMOD_RESULT Rewind();

    /// Output callback: the next frames, at the output's rate; returns how many of @p count were
    /// available.
    std::size_t Read(float* frames, std::size_t count) noexcept;

    /// Any thread: how many can be read now.
    std::size_t Available() const noexcept { return ring.Available(); }

    /// Any thread: whether more frames follow those that can be read now. Ended or Broken (the file
    /// could not be read further, or memory ran out) only once the last frame is available.
    Supply GetSupply() const noexcept { return supply.load(std::memory_order_acquire); }

    /// Waits, on a system that can, until @p count frames (at most 0.9 s) can be read, or no more
    /// follow; at most for @p limit.
    void WaitUntilReady(std::size_t count, std::chrono::milliseconds limit);

    enum class Step : int { Moved, Full, Over };

    /// For its background alone, one thread at a time: decodes the next frames, unless some are
    /// left from before, and moves them to the ring. Full: there is no room for all of them. Over:
    /// no more follow.
    Step Advance();

    /// For its background alone: room in the ring, in frames.
    std::size_t Free() const noexcept { return ring.Free(); }

    /// Any thread: Advance, also one under way, comes back soon.
    void InterruptDecoder() { decoder->Interrupt(); }

private:
    explicit Stream(std::unique_ptr<Decoder> openDecoder);
    void Decode();

    std::unique_ptr<Decoder> decoder;
    Ring ring;
    std::atomic<Supply> supply{Supply::Decoding};

    // The background only:
    std::vector<float> decoded;     // on its way from the decoder to the ring
    std::size_t moved = 0;          // of it, in samples
    Supply next = Supply::Decoding; // the supply once all of it is in the ring

    std::unique_ptr<Background> background; // last: it uses the others
};

} // namespace sound
