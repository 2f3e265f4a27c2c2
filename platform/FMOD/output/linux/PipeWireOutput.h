// The sound device, by way of PipeWire's own protocol, which alone tells exactly what is heard.
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
    /// sink. The stream may have to wait for a link; until then the feed is not asked.
    bool Start() override;

private:
    class Connection;

    DeviceFeed& feed;
    std::unique_ptr<Connection> connection;
};

} // namespace sound
