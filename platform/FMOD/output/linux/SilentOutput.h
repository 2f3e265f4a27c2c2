// The silent output, in real time while there is no device, and the watchdog for lost devices.
#pragma once

#include <thread>

namespace sound {

struct LiveOutput;

/// The watchdog thread. Reports in one line on standard error that there is no sound.
/// Ends with LiveOutput::Stop, which must be called before the destructor.
class SilentOutput {
public:
    /// Throws std::system_error when no thread can be started.
    explicit SilentOutput(LiveOutput& output);
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;
    ~SilentOutput();

private:
    std::thread thread;
};

} // namespace sound
