// A private PulseAudio server with one sink.
#pragma once

#include "PrivateServer.h"

class PrivatePulseAudio final : public PrivateServer {
public:
    PrivatePulseAudio();
    ~PrivatePulseAudio() override;

    /// The sink renders, and the recorder gets, the sound heard in the next 20 ms or so.
    Lag RecordingLag() const override { return {-70.0, 30.0}; }

private:
    void Run() override;
    std::vector<std::string> RecorderCommand(const std::string& path) const override;
    std::vector<std::string> StreamsCommand() const override;
};
