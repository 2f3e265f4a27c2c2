#include "Stream.h"

#include "Background.h"

#include <algorithm>
#include <new>
#include <utility>

namespace sound {

static constexpr std::size_t ringFrames = outputRateHz;

FMOD_RESULT Stream::Open(const char* path, std::unique_ptr<Stream>& stream) {
    std::unique_ptr<Decoder> decoder;
    const FMOD_RESULT result = Decoder::Open(path, decoder);
    if (result == FMOD_OK) {
        stream.reset(new Stream(std::move(decoder)));
        stream->background->Start();
    }
    return result;
}

Stream::Stream(std::unique_ptr<Decoder> openDecoder)
    : decoder(std::move(openDecoder)), ring(ringFrames), background(Background::Of(*this)) {}

Stream::~Stream() {
    background->Stop();
}

FMOD_RESULT Stream::Rewind() {
    background->Stop();
    ring.Reset();
    decoded.clear();
    moved = 0;
    next = Supply::Decoding;
    supply = Supply::Decoding;
    const FMOD_RESULT result = decoder->Rewind();
    if (result == FMOD_OK) {
        background->Start();
    }
    return result;
}

std::size_t Stream::Read(float* frames, std::size_t count) noexcept {
    const std::size_t got = ring.Read(frames, count);
    background->Refill();
    return got;
}

void Stream::WaitUntilReady(std::size_t count, std::chrono::milliseconds limit) {
    background->WaitUntilReady(count, limit);
}

Stream::Step Stream::Advance() {
    if (moved == decoded.size() && next == Supply::Decoding) {
        Decode();
    }
    const std::size_t count = std::min((decoded.size() - moved) / 2, ring.Free());
    ring.Write(decoded.data() + moved, count);
    moved += 2 * count;
    if (moved < decoded.size()) {
        return Step::Full;
    }
    supply.store(next, std::memory_order_release);
    return next == Supply::Decoding ? Step::Moved : Step::Over;
}

void Stream::Decode() {
    decoded.clear();
    moved = 0;
    try {
        const Decoder::Progress progress = decoder->Read(decoded);
        next = progress == Decoder::Progress::Frames ? Supply::Decoding
               : progress == Decoder::Progress::End  ? Supply::Ended
                                                     : Supply::Broken;
    } catch (const std::bad_alloc&) {
        decoded.clear();
        next = Supply::Broken;
    }
}

} // namespace sound
