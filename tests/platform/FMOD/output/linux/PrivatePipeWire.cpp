// A PipeWire session of the test's own: the daemon and its session manager, with two sinks.
#include "PrivatePipeWire.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

// Runs a command to its end, which is to be a good one.
static void Do(const std::vector<std::string>& command) {
    EXPECT_EQ(ChildProcess::Run(command), 0) << command.front() << " is not installed, or failed";
}

PrivatePipeWire::PrivatePipeWire() {
    for (const char* name :
         {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "PIPEWIRE_RUNTIME_DIR"}) {
        setenv(name, folder.Path("").c_str(), 1);
    }
    setenv("PIPEWIRE_REMOTE", folder.Path("pipewire-0").c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + folder.Path("bus")).c_str(), 1);
    std::filesystem::copy(PIPEWIRE_SETTINGS "/wireplumber", folder.Path("wireplumber"),
                          std::filesystem::copy_options::recursive);
    bus.Start(
        {"dbus-daemon", "--session", "--nofork", "--address=unix:path=" + folder.Path("bus")});
    if (bus.Await([this] { return Accepts(folder.Path("bus")); })) {
        Run();
    }
}

void PrivatePipeWire::Run() {
    server.Start({"pipewire", "-c", PIPEWIRE_SETTINGS "/pipewire.conf"});
    if (!server.Await([this] { return Accepts(folder.Path("pipewire-0")); }) ||
        !StartSessionManager()) {
        Kill();
    }
}

void PrivatePipeWire::Kill() {
    PrivateServer::Kill();
    EndSessionManager();
}

void PrivatePipeWire::EndSessionManager() {
    manager.End(SIGKILL);
}

bool PrivatePipeWire::StartSessionManager() {
    manager.Start({"wireplumber"});
    return AwaitDefaultSink();
}

bool PrivatePipeWire::AwaitDefaultSink() {
    return manager.Await([this] {
        return Says({"wpctl", "inspect", "@DEFAULT_AUDIO_SINK@"}, '"' + defaultSink + '"');
    });
}

void PrivatePipeWire::ChooseSink(const std::string& sink) {
    Do({"pw-metadata", "0", "default.configured.audio.sink", "{ \"name\": \"" + sink + "\" }",
        "Spa:String:JSON"});
    defaultSink = sink;
    AwaitDefaultSink();
}

void PrivatePipeWire::SuspendSink(const std::string& sink) const {
    Do({"pw-cli", "send-command", sink, "Suspend", "{}"});
}

void PrivatePipeWire::RemoveSink(const std::string& sink) const {
    Do({"pw-cli", "destroy", sink});
}

void PrivatePipeWire::AddSink(const std::string& sink) const {
    Do({"pw-cli", "create-node", "adapter",
        "{ factory.name = support.null-audio-sink node.name = " + sink +
            " media.class = Audio/Sink audio.position = \"FL,FR\" object.linger = true }"});
}

void PrivatePipeWire::ForceQuantum(int frames) const {
    Do({"pw-metadata", "-n", "settings", "0", "clock.force-quantum", std::to_string(frames)});
}

std::vector<std::string> PrivatePipeWire::RecorderCommand(const std::string& path) const {
    return {"pw-record",    "--target",     defaultSink,    "-P", "{ stream.capture.sink = true }",
            "--rate=44100", "--channels=2", "--format=f32", path};
}

std::vector<std::string> PrivatePipeWire::StreamsCommand() const {
    return {"pw-cli", "ls", "Node"};
}
