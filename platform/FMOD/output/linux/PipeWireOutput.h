// A sound device driven by PipeWire's own protocol, which reports exact positions.
#pragma once

#include "Device.h"

#include <memory>

namespace sound {

class DeviceFeed;

/// A stream of PipeWire's daemon. The daemon's session manager links it to the default sink and
/// moves it when that changes.
class PipeWireOutput final : public Device {
public:
    /// @p fed must outlive it.
    explicit PipeWireOutput(DeviceFeed& fed);
    ~PipeWireOutput() override;

    /// False: no library, no daemon, one that does not answer within a second, or one without any
    /// sink. The stream may have to wait for a link; until then it requests no frames.
    bool Start() override;

private:
    class Connection;

    DeviceFeed& feed;
    std::unique_ptr<Connection> connection;
};

} // namespace sound
