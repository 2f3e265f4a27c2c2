// Keeps a device open for the timeline, on a thread that may block in it.
#pragma once

#include <memory>
#include <span>

namespace sound {

struct DeviceKind;
struct LiveOutput;

/// Starts the thread, which tries @p kinds (at least one; must live as long as the process) in
/// order. The thread is detached: nobody waits for it, and it ends some time after
/// LiveOutput::Stop. Throws std::system_error when no thread can be started.
void StartDeviceThread(std::shared_ptr<LiveOutput> output, std::span<const DeviceKind> kinds);

} // namespace sound
