// What happens to the music while PipeWire goes on: it moves, pauses and changes its step.
#include "LiveFixture.h"
#include "PrivatePipeWire.h"

namespace {

class LivePipeWireTest : public LiveFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(server.IsRunning());
        server.BeginRecording();
        OpenAndPlay(lengthMs / 1000.0);
        ExpectRealTime("before", Watch(1500, &server));
    }

    // A session manager may take seconds to start on a busy machine.
    static constexpr unsigned int lengthMs = 10'500;

    PrivatePipeWire server;
};

} // namespace

TEST_F(LivePipeWireTest, IsHeardOnTheSinkThatBecomesTheDefault) {
    server.ChooseSink("sink-b");
    server.BeginRecording();
    ExpectHeardAgain(server, Position(), lengthMs);
}

// A recorder that was there before hears nothing more of the sink, whoever plays.
TEST_F(LivePipeWireTest, IsHeardAgainAfterItsSinkWasSuspended) {
    server.SuspendSink("sink-a");
    server.BeginRecording();
    ExpectHeardAgain(server, Position(), lengthMs);
}

// As on a desktop, where the sinks are the session manager's, and go and come with it.
TEST_F(LivePipeWireTest, IsHeardAgainOnceThereIsASessionManagerAgain) {
    server.EndSessionManager();
    server.RemoveSink("sink-a");
    server.RemoveSink("sink-b");
    ExpectRealTime("without", Watch(Position() + 2000));
    server.AddSink("sink-a");
    server.StartSessionManager();
    server.BeginRecording();
    ExpectHeardAgain(server, Position(), lengthMs);
}

TEST_F(LivePipeWireTest, StaysInStepWhenTheQuantumChanges) {
    server.ForceQuantum(256);
    const unsigned int shortMs = Position();
    const unsigned int longAgainMs = shortMs + 1500;
    ExpectRealTime("short", Watch(longAgainMs, &server));
    server.ForceQuantum(0);
    ExpectHeardAgain(server, Position(), lengthMs);
    ExpectInStep("before", server, 0, 1500);
    ExpectInStep("short", server, shortMs, longAgainMs);
}
