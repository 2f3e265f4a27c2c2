// Whether JACK is worth asking.
#include "JackServer.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include <unistd.h>

namespace sound {

// The path of a socket ends its line; of the server's that is jack_NAME_USER_0, which its clients
// connect to first. (JACK 1 has jack_0 in a folder NAME of a folder jack-USER.)
bool JackServerRuns() {
    const char* chosen = std::getenv("JACK_DEFAULT_SERVER");
    const std::string name = chosen != nullptr && *chosen != '\0' ? chosen : "default";
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
