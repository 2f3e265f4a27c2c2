// The kinds of devices that there are, and which of them are to be tried.
#pragma once

#include "OutputTimeline.h"

#include <memory>
#include <span>

namespace sound {

class Device;

struct DeviceKind {
    const char* name; ///< as SKOVRA_SOUND has it
    DeviceFeed::Reports reports;
    std::unique_ptr<Device> (*make)(DeviceFeed& feed); ///< null: not worth trying now
};

/// In the order in which to try them: all, the one that the environment variable SKOVRA_SOUND
/// names, or none if that is "none". A name that is none of these counts for nothing and is told on
/// standard error.
std::span<const DeviceKind> ChosenDevices();

} // namespace sound
