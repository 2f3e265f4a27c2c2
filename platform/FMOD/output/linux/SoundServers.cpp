#include "SoundServers.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <string>

#include <unistd.h>

namespace sound {

static std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// The folders are those that the library searches.
bool PipeWireMayRun() {
    if (!Environment("PIPEWIRE_REMOTE").empty()) {
        return true;
    }
    const std::array<std::string, 4> folders = {Environment("PIPEWIRE_RUNTIME_DIR"),
                                                Environment("XDG_RUNTIME_DIR"),
                                                Environment("USERPROFILE"), "/run/pipewire"};
    return std::any_of(folders.begin(), folders.end(), [](const std::string& folder) {
        return !folder.empty() && access((folder + "/pipewire-0").c_str(), F_OK) == 0;
    });
}

// Each line ends with the path of a socket. The server's is jack_NAME_USER_0, to which its clients
// connect first. (JACK 1 has jack-USER/NAME/jack_0.)
bool JackServerRuns() {
    const std::string chosen = Environment("JACK_DEFAULT_SERVER");
    const std::string name = chosen.empty() ? "default" : chosen;
    const std::string user = std::to_string(getuid());
    const std::string ofJack2 = "/jack_" + name + "_" + user + "_0";
    const std::string ofJack1 = "/jack-" + user + "/" + name + "/jack_0";
    std::ifstream sockets("/proc/net/unix");
    for (std::string line; std::getline(sockets, line);) {
        if (line.ends_with(ofJack2) || line.ends_with(ofJack1)) {
            return true;
        }
    }
    return false;
}

} // namespace sound
