// A private sound server with null sinks.
#pragma once

#include "ChildProcess.h"
#include "Mp3Files.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// Runs as long as the object exists; the environment points this process to it. The server's
/// packages must be installed, or the test fails.
class PrivateServer {
public:
    PrivateServer() = default;
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;
    virtual ~PrivateServer() = default;

    bool IsRunning() { return server.IsRunning(); }

    virtual void Kill();

    /// Kills it, and runs a new one in its place.
    void Restart();

    /// Make it hang, and continue.
    void Stop() const;
    void Continue() const;

    /// Waits until the library has a stream open there, playing or not.
    void AwaitStream();

    /// Records what the default sink plays, as stereo frames at 44.1 kHz, until EndRecording. Also
    /// keeps the sink awake; an idle one starts late.
    void BeginRecording();

    /// The number of frames recorded so far, a few ms late.
    std::size_t RecordedFrames() const;
    std::vector<float> EndRecording();

    /// The minimum of position heard minus position recorded, in ms: between these two, even on a
    /// busy machine.
    struct Lag {
        double fromMs;
        double toMs;
    };
    virtual Lag RecordingLag() const = 0;

protected:
    /// Starts it and waits until it is ready to play.
    virtual void Run() = 0;

    /// The command that records to @p path, as raw floats.
    virtual std::vector<std::string> RecorderCommand(const std::string& path) const = 0;

    /// The command that lists the open streams.
    virtual std::vector<std::string> StreamsCommand() const = 0;

    /// Whether the output of @p command contains @p text.
    bool Says(std::vector<std::string> command, const std::string& text) const;

    files::Folder folder;
    ChildProcess server;

private:
    std::string RecordedPath() const { return folder.Path("recorded.raw"); }

    ChildProcess recorder;
};

/// A kind of server, for tests with each.
struct ServerKind {
    const char* name;
    const char* device; ///< its value of SKOVRA_SOUND
    std::unique_ptr<PrivateServer> (*run)();
};

inline std::ostream& operator<<(std::ostream& stream, const ServerKind& kind) {
    return stream << kind.name;
}

extern const ServerKind pulseAudio;
extern const ServerKind pipeWire;

inline auto EachServer() {
    return testing::Values(pulseAudio, pipeWire);
}

inline std::string NameOf(const testing::TestParamInfo<ServerKind>& info) {
    return info.param.name;
}

/// Whether something listens at the socket @p path.
bool Accepts(const std::string& path);

/// Hides all sound systems from this process.
void HideSoundSystems();
