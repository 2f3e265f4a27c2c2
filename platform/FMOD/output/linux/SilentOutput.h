// Plays silence in real time while there is no device, and notices when one is lost.
#pragma once

#include <thread>

namespace sound {

struct LiveOutput;

/// The watching thread. Tells the viewer, in one line on standard error, when there is no sound.
/// Ends with LiveOutput::Stop, which is to be called before the destructor.
class SilentOutput {
public:
    /// Throws std::system_error when threads ran out.
    explicit SilentOutput(LiveOutput& output);
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;
    ~SilentOutput();

private:
    std::thread thread;
};

} // namespace sound
