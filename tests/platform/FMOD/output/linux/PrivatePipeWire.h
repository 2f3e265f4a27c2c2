// A PipeWire session of the test's own: the daemon and its session manager, with two sinks.
#pragma once

#include "PrivateServer.h"

#include <string>
#include <vector>

class PrivatePipeWire final : public PrivateServer {
public:
    PrivatePipeWire();

    /// The session manager, which knows the default sink and links streams to it, ends with it.
    void Kill() override;

    /// Without it, streams that come find no sink, and those that play lose theirs.
    void EndSessionManager();

    /// False, and the test fails: there is none.
    bool StartSessionManager();

    /// Makes @p sink, "sink-a" (which it is at first) or "sink-b", the default.
    void ChooseSink(const std::string& sink);

    /// For a moment: one that is in use is taken up again by itself.
    void SuspendSink(const std::string& sink) const;

    void RemoveSink(const std::string& sink) const;
    void AddSink(const std::string& sink) const;

    /// Makes all cycles of the graph @p frames long; 0: as the streams want it.
    void ForceQuantum(int frames) const;

    /// At the beginning of a cycle the recorder gets what was heard until then.
    Lag RecordingLag() const override { return {-25.0, 25.0}; }

private:
    void Run() override;
    bool AwaitDefaultSink();
    std::vector<std::string> RecorderCommand(const std::string& path) const override;
    std::vector<std::string> StreamsCommand() const override;

    ChildProcess bus;
    ChildProcess manager;
    std::string defaultSink = "sink-a";
};
