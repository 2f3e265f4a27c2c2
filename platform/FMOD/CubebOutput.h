// The sound device, by way of cubeb. The only file that knows it.
#pragma once

#include <cstdint>
#include <memory>

struct cubeb;
struct cubeb_stream;

namespace sound {

class DeviceFeed;

/// One opened device. All its operations may hang for as long as the sound server does.
class CubebOutput {
public:
    /// @p fed must outlive it.
    explicit CubebOutput(DeviceFeed& fed) : feed(fed) {}
    CubebOutput(const CubebOutput&) = delete;
    CubebOutput& operator=(const CubebOutput&) = delete;
    ~CubebOutput();

    /// Opens the default device and starts it; false: there is none.
    bool Start();

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
    std::unique_ptr<cubeb, DeleteContext> context;
    std::unique_ptr<cubeb_stream, DeleteStream> stream;
};

} // namespace sound
