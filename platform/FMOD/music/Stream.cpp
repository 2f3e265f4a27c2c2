#include "Stream.h"

#include <algorithm>
#include <new>

namespace sound {

static constexpr std::size_t ringFrames = outputRateHz;
static constexpr std::size_t leastRoom = 4096;

// The output callback does not notify the decode thread, which would be a system call: the decode
// thread polls, once per quarter of the ring. More often costs more, because its code and data have
// left the caches each time.
static constexpr std::chrono::milliseconds pollPeriod{250};

FMOD_RESULT Stream::Open(const char* path, std::unique_ptr<Stream>& stream) {
    std::unique_ptr<Decoder> decoder;
    const FMOD_RESULT result = Decoder::Open(path, decoder);
    if (result == FMOD_OK) {
        stream.reset(new Stream(std::move(decoder)));
        stream->StartDecoding();
    }
    return result;
}

Stream::Stream(std::unique_ptr<Decoder> openDecoder)
    : decoder(std::move(openDecoder)), ring(ringFrames) {}

Stream::~Stream() {
    StopDecoding();
}

FMOD_RESULT Stream::Rewind() {
    StopDecoding();
    ring.Reset();
    supply = Supply::Decoding;
    const FMOD_RESULT result = decoder->Rewind();
    if (result == FMOD_OK) {
        StartDecoding();
    }
    return result;
}

void Stream::StartDecoding() {
    stopping = false;
    thread = std::thread(&Stream::Run, this);
}

void Stream::StopDecoding() {
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
    }
    decoder->Interrupt();
    wake.notify_all();
    if (thread.joinable()) {
        thread.join();
    }
}

std::size_t Stream::Read(float* frames, std::size_t count) noexcept {
    return ring.Read(frames, count);
}

void Stream::WaitUntilReady(std::size_t count, std::chrono::milliseconds limit) {
    waiting.fetch_add(1);
    {
        std::unique_lock<std::mutex> lock(mutex);
        wake.notify_all();
        ready.wait_for(lock, limit, [this, count] {
            return ring.Available() >= count || GetSupply() != Supply::Decoding;
        });
    }
    waiting.fetch_sub(1);
}

void Stream::NotifyWaiting() {
    // Adding 0 orders this after the write to the ring: a thread that began to wait unseen sees it.
    if (waiting.fetch_add(0) > 0) {
        const std::lock_guard<std::mutex> lock(mutex);
        ready.notify_all();
    }
}

// The decode thread. It does not end by itself: a process that exits during the show joins no
// threads, and one that had ended would be reported as leaked.
void Stream::Run() {
    try {
        while (DecodeMore() && WriteAll()) {
        }
    } catch (const std::bad_alloc&) {
        supply.store(Supply::Broken, std::memory_order_release);
    }
    NotifyWaiting();
    std::unique_lock<std::mutex> lock(mutex);
    wake.wait(lock, [this] { return stopping; });
}

// Puts the next frames into `decoded`; false when there are no more.
bool Stream::DecodeMore() {
    decoded.clear();
    const Decoder::Progress progress = decoder->Read(decoded);
    if (progress == Decoder::Progress::Frames) {
        return true;
    }
    if (WriteAll()) {
        const bool ended = progress == Decoder::Progress::End;
        supply.store(ended ? Supply::Ended : Supply::Broken, std::memory_order_release);
    }
    return false;
}

// Moves `decoded` to the ring as room becomes available; false when stopped.
bool Stream::WriteAll() {
    const float* next = decoded.data();
    std::size_t left = decoded.size() / 2;
    for (;;) {
        const std::size_t count = std::min(left, ring.Free());
        ring.Write(next, count);
        next += 2 * count;
        left -= count;
        NotifyWaiting();
        std::unique_lock<std::mutex> lock(mutex);
        while (!stopping && left > 0 && ring.Free() < leastRoom) {
            wake.wait_for(lock, pollPeriod);
        }
        if (stopping || left == 0) {
            return !stopping;
        }
    }
}

} // namespace sound
