// A sound server of the test's own, whose sinks play into nothing.
#pragma once

#include "ChildProcess.h"
#include "Mp3Files.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// Runs from the construction to the end. The environment leads this process to it; programs of the
/// server's packages must be installed, or the test fails.
class PrivateServer {
public:
    PrivateServer() = default;
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;
    virtual ~PrivateServer() = default;

    bool IsRunning() { return server.IsRunning(); }

    virtual void Kill();

    /// Kills it, and runs a new one where it was.
    void Restart();

    /// Makes it hang, and go on.
    void Stop() const;
    void Continue() const;

    /// Until a stream of the library is open there, whether it plays yet or not.
    void AwaitStream();

    /// Begins to note what the default sink plays, as stereo frames at 44.1 kHz, until
    /// EndRecording. The sink is awake from then on; an idle one starts late.
    void BeginRecording();

    /// Of what the sink has played, a few ms late.
    std::size_t RecordedFrames() const;
    std::vector<float> EndRecording();

    /// What is heard less what is recorded by then, in ms, when that is least: between these two,
    /// on a busy machine, too.
    struct Lag {
        double fromMs;
        double toMs;
    };
    virtual Lag RecordingLag() const = 0;

protected:
    /// Starts it and waits until it can play.
    virtual void Run() = 0;

    /// What writes to @p path, as plain floats.
    virtual std::vector<std::string> RecorderCommand(const std::string& path) const = 0;

    /// What lists the streams that are open.
    virtual std::vector<std::string> StreamsCommand() const = 0;

    /// Runs @p command: whether @p text is in what it says.
    bool Says(std::vector<std::string> command, const std::string& text) const;

    files::Folder folder;
    ChildProcess server;

private:
    std::string RecordedPath() const { return folder.Path("recorded.raw"); }

    ChildProcess recorder;
};

/// A kind of server, for tests that are of each.
struct ServerKind {
    const char* name;
    const char* device; ///< what SKOVRA_SOUND calls it
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

/// Leads this process to no sound system at all.
void HideSoundSystems();
