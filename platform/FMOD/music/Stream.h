// A file decoded ahead of the output, in the background.
#pragma once

#include "Decoder.h"
#include "Output.h"
#include "Ring.h"

#include <FMOD/FMOD.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace sound {

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

    /// Waits until @p count frames (at most 0.9 s) can be read, or no more follow; at most
    /// for @p limit.
    void WaitUntilReady(std::size_t count, std::chrono::milliseconds limit);

private:
    explicit Stream(std::unique_ptr<Decoder> openDecoder);
    void StartDecoding();
    void StopDecoding();
    void Run();
    bool DecodeMore();
    bool WriteAll();
    void NotifyWaiting();

    std::unique_ptr<Decoder> decoder;
    std::vector<float> decoded; // on its way from the decoder to the ring
    Ring ring;
    std::atomic<Supply> supply{Supply::Decoding};

    std::mutex mutex;
    std::condition_variable wake;  // the decode thread waits for room
    std::condition_variable ready; // others wait for frames
    bool stopping = false;         // under the mutex
    std::atomic<int> waiting{0};
    std::thread thread;
};

} // namespace sound
