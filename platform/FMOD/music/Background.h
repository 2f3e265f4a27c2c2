// What decodes a stream ahead of who reads it; each system has its own.
#pragma once

#include "Stream.h"

#include <chrono>
#include <cstddef>
#include <memory>

namespace sound {

class Background {
public:
    /// For the stream that owns it.
    static std::unique_ptr<Background> Of(Stream& stream);

    Background() = default;
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;
    virtual ~Background() = default;

    /// From now on the stream is decoded as there is room for it. Throws std::system_error when no
    /// thread can be started.
    virtual void Start() = 0;

    /// When it returns, the stream's decoder and ring are no longer used. Also before Start.
    virtual void Stop() = 0;

    /// Output callback: there is more room.
    virtual void Refill() noexcept = 0;

    /// As Stream::WaitUntilReady.
    virtual void WaitUntilReady(std::size_t count, std::chrono::milliseconds limit) = 0;
};

} // namespace sound
