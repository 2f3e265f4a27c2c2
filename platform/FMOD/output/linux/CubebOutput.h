// A sound device driven through cubeb. Only this class uses that library.
#pragma once

#include "Device.h"

#include <memory>

struct cubeb;
struct cubeb_stream;

namespace sound {

class DeviceFeed;

class CubebOutput final : public Device {
public:
    /// @p backendName: cubeb's name of the sound system ("pulse", "alsa", "jack"); must outlive it,
    /// and so must @p fed.
    CubebOutput(DeviceFeed& fed, const char* backendName) : feed(fed), backend(backendName) {}
    ~CubebOutput() override;

    bool Start() override;

private:
    struct DeleteContext {
        void operator()(cubeb* owned) const;
    };
    struct DeleteStream {
        void operator()(cubeb_stream* owned) const;
    };

    static long Fill(cubeb_stream* stream, void* feed, const void* input, void* output,
                     long frames) noexcept;

    DeviceFeed& feed;
    const char* backend;
    std::unique_ptr<cubeb, DeleteContext> context;
    std::unique_ptr<cubeb_stream, DeleteStream> stream;
};

} // namespace sound
