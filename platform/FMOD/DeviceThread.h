// Keeps a device open behind the timeline, on a thread that may hang in it.
#pragma once

#include <memory>

namespace sound {

struct LiveOutput;

/// Starts the thread. It is on its own: nobody waits for it, and it ends some time after
/// LiveOutput::Stop. Throws std::system_error when threads ran out.
void StartDeviceThread(std::shared_ptr<LiveOutput> output);

} // namespace sound
