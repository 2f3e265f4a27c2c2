// Keeps a device open for the timeline.
#pragma once

#include <memory>
#include <span>

namespace sound {

struct DeviceKind;
struct LiveOutput;

/// Starts the thread, which tries @p kinds (at least one; must live as long as the process) in
/// order. It calls no device itself (see DeviceAttempt), so that one that hangs does not keep it
/// from trying the others. The thread is detached, and ends some time after LiveOutput::Stop.
/// Throws std::system_error when no thread can be started.
void StartDeviceThread(std::shared_ptr<LiveOutput> output, std::span<const DeviceKind> kinds);

} // namespace sound
