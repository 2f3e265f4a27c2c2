// One way to play: what the device thread opens, watches and closes.
#pragma once

namespace sound {

/// One device, fed by the DeviceFeed that it was made with. Device thread only: all its operations,
/// the destructor included, may hang for as long as the sound system does.
class Device {
public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    /// Closes it: when it returns, the feed is not used any more.
    virtual ~Device() = default;

    /// Opens the default device and starts it; false: there is none. Called once.
    virtual bool Start() = 0;
};

} // namespace sound
