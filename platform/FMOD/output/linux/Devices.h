// The kinds of devices, and which of them to try.
#pragma once

#include "OutputTimeline.h"

#include <memory>
#include <span>

namespace sound {

class Device;

struct DeviceKind {
    const char* name; ///< its value of SKOVRA_SOUND
    DeviceFeed::Reports reports;
    std::unique_ptr<Device> (*make)(DeviceFeed& feed); ///< null: not worth trying now
};

/// The kinds to try, in order: all, the one that the environment variable SKOVRA_SOUND names, or
/// none if that is "none". An unknown name is reported on standard error and ignored.
std::span<const DeviceKind> ChosenDevices();

} // namespace sound
