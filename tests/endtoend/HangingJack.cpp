// A JACK server that seems to run, and whose library hangs: as it does once a process has been
// killed while it held one of its locks. To be preloaded; HANGING_JACK is a folder, in which the
// file "entered" then tells that the library was called.
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static std::string Path(const std::string& name) {
    const char* folder = std::getenv("HANGING_JACK");
    return (folder == nullptr ? std::string() : std::string(folder)) + "/" + name;
}

// The socket is what the server is known by.
[[gnu::constructor]] static void Listen() {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = Path("jack_default_" + std::to_string(getuid()) + "_0");
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (server < 0 ||
        bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        listen(server, 1) != 0) {
        _exit(2);
    }
}

extern "C" [[noreturn]] void jack_client_open() {
    std::ofstream(Path("entered")) << "entered\n";
    for (;;) {
        pause();
    }
}
