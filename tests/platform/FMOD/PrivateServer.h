// A PulseAudio server of the test's own, whose only sink plays into nothing.
#pragma once

#include "Mp3Files.h"

#include <cstddef>
#include <string>
#include <vector>

#include <sys/types.h>

/// Runs from the construction to the end. The environment leads this process to it and to no other
/// sound system; programs of the server's package must be installed, or the test fails.
class PrivateServer {
public:
    PrivateServer();
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;
    ~PrivateServer();

    bool IsRunning() const { return server > 0; }

    void Kill();

    /// Kills it, and runs a new one where it was.
    void Restart();

    /// Makes it hang, and go on.
    void Stop();
    void Continue();

    /// Begins to note what the sink plays, as stereo frames at 44.1 kHz, until EndRecording. The
    /// sink is awake from then on; an idle one starts late.
    void BeginRecording();

    /// Of what the sink has played, a few ms late.
    std::size_t RecordedFrames() const;
    std::vector<float> EndRecording();

private:
    void Run();

    files::Folder folder;
    pid_t server = -1;
    pid_t recorder = -1;
};

/// Leads this process to no sound system at all.
void HideSoundSystems();
