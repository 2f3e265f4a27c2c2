// A PulseAudio server of the test's own, with one sink.
#include "PrivatePulseAudio.h"

#include <csignal>
#include <cstdlib>

PrivatePulseAudio::PrivatePulseAudio() {
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"}) {
        setenv(name, folder.Path("").c_str(), 1);
    }
    setenv("PULSE_SERVER", ("unix:" + folder.Path("socket")).c_str(), 1);
    Run();
}

PrivatePulseAudio::~PrivatePulseAudio() {
    Continue();
    server.End(SIGTERM);
}

void PrivatePulseAudio::Run() {
    const std::string socket = folder.Path("socket");
    server.Start({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                  "--disable-shm=yes", "-L", "module-null-sink", "-L",
                  "module-native-protocol-unix auth-anonymous=1 socket=" + socket});
    server.Await([&] { return Accepts(socket); });
}

std::vector<std::string> PrivatePulseAudio::RecorderCommand(const std::string& path) const {
    return {
        "parec", "--raw", "--format=float32le", "--rate=44100", "--channels=2", "--latency-msec=20",
        path};
}

std::vector<std::string> PrivatePulseAudio::StreamsCommand() const {
    return {"pactl", "list", "sink-inputs"};
}
