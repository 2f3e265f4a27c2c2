// Which kinds of devices are tried, and in which order.
#include "Devices.h"

#include "Mp3Files.h"
#include "SoundServers.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

class DevicesTest : public testing::Test {
protected:
    DevicesTest() { unsetenv("SKOVRA_SOUND"); }
    ~DevicesTest() override { unsetenv("SKOVRA_SOUND"); }

    // What is tried, and what is said of it.
    void ExpectChosen(const std::string& names, const std::string& said = "") {
        std::string chosen;
        testing::internal::CaptureStderr();
        for (const sound::DeviceKind& kind : sound::ChosenDevices()) {
            chosen += (chosen.empty() ? "" : " ") + std::string(kind.name);
        }
        EXPECT_EQ(testing::internal::GetCapturedStderr(), said);
        EXPECT_EQ(chosen, names);
    }

    static constexpr const char* all = "pipewire pulse alsa jack";
};

} // namespace

TEST_F(DevicesTest, AreTriedInOrder) {
    ExpectChosen(all);
}

TEST_F(DevicesTest, AreTheOneThatTheEnvironmentNames) {
    for (const char* name : {"pipewire", "pulse", "alsa", "jack"}) {
        setenv("SKOVRA_SOUND", name, 1);
        ExpectChosen(name);
    }
}

TEST_F(DevicesTest, AreNoneIfTheEnvironmentSaysSo) {
    setenv("SKOVRA_SOUND", "none", 1);
    ExpectChosen("");
}

TEST_F(DevicesTest, AreAllIfTheEnvironmentIsEmpty) {
    setenv("SKOVRA_SOUND", "", 1);
    ExpectChosen(all);
}

TEST_F(DevicesTest, AreAllIfTheEnvironmentNamesNone) {
    for (const std::string name : {"pulseaudio", "Pulse", "pipewire,pulse", " "}) {
        setenv("SKOVRA_SOUND", name.c_str(), 1);
        ExpectChosen(all, std::string(program_invocation_short_name) + ": SKOVRA_SOUND=" + name +
                              " is none of pipewire, pulse, alsa, jack, none; trying all\n");
    }
}

TEST_F(DevicesTest, TellExactlyWhatIsHeardOnlyOnPipeWire) {
    for (const sound::DeviceKind& kind : sound::ChosenDevices()) {
        EXPECT_EQ(kind.reports == sound::DeviceFeed::Reports::Exact,
                  std::string(kind.name) == "pipewire");
    }
}

namespace {

// A server's socket, for as long as this lives.
class ListeningSocket {
public:
    explicit ListeningSocket(const std::string& path)
        : file(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
        EXPECT_TRUE(file >= 0 &&
                    bind(file, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 &&
                    listen(file, 1) == 0);
    }
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;
    ~ListeningSocket() { close(file); }

private:
    int file;
};

} // namespace

// No library is loaded, and none of its threads started, where nobody would answer.
TEST(PipeWire, MayRunWhereASocketOfItIsThere) {
    files::Folder folder;
    for (const char* name : {"PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR", "USERPROFILE"}) {
        unsetenv(name);
    }
    setenv("XDG_RUNTIME_DIR", folder.Path("").c_str(), 1);
    EXPECT_FALSE(sound::PipeWireMayRun());

    const ListeningSocket daemon(folder.Path("pipewire-0"));
    EXPECT_TRUE(sound::PipeWireMayRun());
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_FALSE(sound::PipeWireMayRun());
    setenv("PIPEWIRE_RUNTIME_DIR", folder.Path("").c_str(), 1);
    EXPECT_TRUE(sound::PipeWireMayRun());
    unsetenv("PIPEWIRE_RUNTIME_DIR");
    setenv("PIPEWIRE_REMOTE", "another", 1);
    EXPECT_TRUE(sound::PipeWireMayRun());
    unsetenv("PIPEWIRE_REMOTE");
}

TEST(JackServer, RunsWhileItsSocketIsThere) {
    files::Folder folder;
    setenv("JACK_DEFAULT_SERVER", "skovra-test", 1);
    const std::string socket = folder.Path("jack_skovra-test_" + std::to_string(getuid()) + "_0");

    EXPECT_FALSE(sound::JackServerRuns());
    {
        const ListeningSocket server(socket);
        EXPECT_TRUE(sound::JackServerRuns());
        setenv("JACK_DEFAULT_SERVER", "another", 1);
        EXPECT_FALSE(sound::JackServerRuns());
    }
    setenv("JACK_DEFAULT_SERVER", "skovra-test", 1);
    EXPECT_FALSE(sound::JackServerRuns()); // its file is left, the server is gone
}
