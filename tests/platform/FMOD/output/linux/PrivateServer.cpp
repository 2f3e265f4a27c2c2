// A sound server of the test's own, whose sinks play into nothing.
#include "PrivateServer.h"

#include "PrivatePipeWire.h"
#include "PrivatePulseAudio.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

void PrivateServer::Kill() {
    server.End(SIGKILL);
}

void PrivateServer::Restart() {
    Kill();
    Run();
}

void PrivateServer::Stop() const {
    server.Signal(SIGSTOP);
}

void PrivateServer::Continue() const {
    server.Signal(SIGCONT);
}

// A command that never gets its answer is one that does not say it; it may be asked again.
bool PrivateServer::Says(std::vector<std::string> command, const std::string& text) const {
    const std::string path = folder.Path("said");
    command.insert(command.begin(), {"timeout", "10"});
    ChildProcess question;
    question.Start(command, path);
    question.Wait();
    const files::Bytes said = files::ReadAll(path);
    std::filesystem::remove(path);
    return std::string(said.begin(), said.end()).find(text) != std::string::npos;
}

void PrivateServer::AwaitStream() {
    server.Await([this] { return Says(StreamsCommand(), "\"Skovra\""); });
}

void PrivateServer::BeginRecording() {
    recorder.End(SIGTERM);
    std::filesystem::remove(RecordedPath());
    recorder.Start(RecorderCommand(RecordedPath()));
    // From its first bytes on it has all that is played.
    recorder.Await([this] { return !files::ReadAll(RecordedPath()).empty(); });
}

std::size_t PrivateServer::RecordedFrames() const {
    return std::filesystem::file_size(RecordedPath()) / (2 * sizeof(float));
}

std::vector<float> PrivateServer::EndRecording() {
    recorder.End(SIGTERM);
    const files::Bytes bytes = files::ReadAll(RecordedPath());
    std::vector<float> frames(bytes.size() / sizeof(float));
    std::memcpy(frames.data(), bytes.data(), frames.size() * sizeof(float));
    return frames;
}

const ServerKind pulseAudio = {"PulseAudio", "pulse", []() -> std::unique_ptr<PrivateServer> {
                                   return std::make_unique<PrivatePulseAudio>();
                               }};
const ServerKind pipeWire = {"PipeWire", "pipewire", []() -> std::unique_ptr<PrivateServer> {
                                 return std::make_unique<PrivatePipeWire>();
                             }};

bool Accepts(const std::string& path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (client < 0) {
        return false;
    }
    const bool accepted =
        connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(client);
    return accepted;
}

void HideSoundSystems() {
    unsetenv("SKOVRA_SOUND");
    setenv("PIPEWIRE_REMOTE", "/nonexistent/pipewire", 1);
    setenv("PULSE_SERVER", "unix:/nonexistent/server", 1);
    setenv("ALSA_CONFIG_PATH", "/dev/null", 1);
    setenv("JACK_NO_START_SERVER", "1", 1);
    setenv("JACK_DEFAULT_SERVER", "nonexistent", 1);
}
