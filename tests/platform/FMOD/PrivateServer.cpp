// A PulseAudio server of the test's own, whose only sink plays into nothing.
#include "PrivateServer.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

// Starts @p command with its standard output in @p outputPath; -1 if there is no such program.
static pid_t Start(const std::vector<std::string>& command, const std::string& outputPath) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputPath.c_str(),
                                     O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = -1;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0) << "cannot run " << command[0]
                        << "; it is in the packages pulseaudio and pulseaudio-utils";
    return error == 0 ? child : -1;
}

static void End(pid_t& child, int signal) {
    if (child > 0) {
        kill(child, signal);
        waitpid(child, nullptr, 0);
        child = -1;
    }
}

static bool Accepts(const std::string& socketPath) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, socketPath.c_str(), sizeof(address.sun_path) - 1);
    const int client = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool accepted =
        connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(client);
    return accepted;
}

void HideSoundSystems() {
    setenv("PULSE_SERVER", "unix:/nonexistent/server", 1);
    setenv("ALSA_CONFIG_PATH", "/dev/null", 1);
    setenv("JACK_NO_START_SERVER", "1", 1);
    setenv("JACK_DEFAULT_SERVER", "nonexistent", 1);
}

PrivateServer::PrivateServer() {
    HideSoundSystems();
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"}) {
        setenv(name, folder.Path("").c_str(), 1);
    }
    setenv("PULSE_SERVER", ("unix:" + folder.Path("socket")).c_str(), 1);
    Run();
}

void PrivateServer::Run() {
    const std::string socketPath = folder.Path("socket");
    server = Start({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                    "--use-pid-file=no", "--disable-shm=yes", "-L", "module-null-sink", "-L",
                    "module-native-protocol-unix auth-anonymous=1 socket=" + socketPath},
                   "/dev/null");
    while (server > 0 && !Accepts(socketPath)) {
        if (waitpid(server, nullptr, WNOHANG) != 0) {
            ADD_FAILURE() << "pulseaudio ended before it could be reached";
            server = -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

PrivateServer::~PrivateServer() {
    End(recorder, SIGTERM);
    Continue();
    End(server, SIGTERM);
}

void PrivateServer::Kill() {
    End(server, SIGKILL);
}

void PrivateServer::Restart() {
    Kill();
    Run();
}

void PrivateServer::Stop() {
    if (server > 0) {
        kill(server, SIGSTOP);
    }
}

void PrivateServer::Continue() {
    if (server > 0) {
        kill(server, SIGCONT);
    }
}

void PrivateServer::BeginRecording() {
    End(recorder, SIGTERM);
    std::filesystem::remove(folder.Path("recorded"));
    recorder = Start({"parec", "--raw", "--format=float32le", "--rate=44100", "--channels=2",
                      "--latency-msec=20"},
                     folder.Path("recorded"));
    // From its first bytes on it has all that is played.
    while (recorder > 0 && files::ReadAll(folder.Path("recorded")).empty()) {
        if (waitpid(recorder, nullptr, WNOHANG) != 0) {
            ADD_FAILURE() << "parec ended before it recorded anything";
            recorder = -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

std::size_t PrivateServer::RecordedFrames() const {
    return std::filesystem::file_size(folder.Path("recorded")) / (2 * sizeof(float));
}

std::vector<float> PrivateServer::EndRecording() {
    End(recorder, SIGTERM);
    const files::Bytes bytes = files::ReadAll(folder.Path("recorded"));
    std::vector<float> frames(bytes.size() / sizeof(float));
    std::memcpy(frames.data(), bytes.data(), frames.size() * sizeof(float));
    return frames;
}
