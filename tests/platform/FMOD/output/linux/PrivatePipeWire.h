// A private PipeWire session: the daemon and its session manager, with two sinks.
#pragma once

#include "PrivateServer.h"

#include <string>
#include <vector>

class PrivatePipeWire final : public PrivateServer {
public:
    PrivatePipeWire();

    /// Also ends the session manager, which links streams to the default sink.
    void Kill() override;

    /// Without it, new streams find no sink, and playing ones lose theirs.
    void EndSessionManager();

    /// False, and the test fails, if it cannot be started.
    bool StartSessionManager();

    /// Makes @p sink, "sink-a" (which it is at first) or "sink-b", the default.
    void ChooseSink(const std::string& sink);

    /// For a moment: a sink in use resumes by itself.
    void SuspendSink(const std::string& sink) const;

    void RemoveSink(const std::string& sink) const;
    void AddSink(const std::string& sink) const;

    /// Forces the quantum of the graph to @p frames; 0: as the streams request.
    void ForceQuantum(int frames) const;

    /// At the start of a cycle the recorder gets the sound heard until then.
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
