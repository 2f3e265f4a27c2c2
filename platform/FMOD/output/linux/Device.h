// A sound device, which an attempt opens and closes.
#pragma once

namespace sound {

/// One device, fed by the DeviceFeed that it was made with. Its attempt's thread only: all
/// operations, the destructor included, may block for as long as the sound system hangs.
class Device {
public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    /// Closes it: when it returns, the feed is no longer used.
    virtual ~Device() = default;

    /// Opens the default device and starts it; false: there is none. Called once.
    virtual bool Start() = 0;
};

} // namespace sound
