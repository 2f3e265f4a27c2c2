// Keeps a device open behind the timeline, on a thread that may hang in it.
#pragma once

#include <memory>
#include <span>

namespace sound {

struct DeviceKind;
struct LiveOutput;

/// Starts the thread, which tries @p kinds (at least one, as long as the process) in their order.
/// It is on its own: nobody waits for it, and it ends some time after LiveOutput::Stop. Throws
/// std::system_error when threads ran out.
void StartDeviceThread(std::shared_ptr<LiveOutput> output, std::span<const DeviceKind> kinds);

} // namespace sound
