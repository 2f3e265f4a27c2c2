// Asks a running mpv every millisecond for its position, until it ends: mpv-position SOCKET LOG
#include "Answers.h"
#include "Clock.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static int Connect(const char* path) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof(address.sun_path) - 1);
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (server < 0 ||
        connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        std::perror(path);
        std::exit(2);
    }
    return server;
}

namespace {

class Conversation {
public:
    explicit Conversation(const char* path) : server(Connect(path)) {}

    bool Send(const std::string& line) {
        return send(server, line.data(), line.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(line.size());
    }

    /// The next line that holds @p word; empty at the end.
    std::string Receive(const std::string& word) {
        for (;;) {
            const std::size_t end = received.find('\n');
            if (end != std::string::npos) {
                std::string line = received.substr(0, end);
                received.erase(0, end + 1);
                if (line.find(word) != std::string::npos) {
                    return line;
                }
                continue;
            }
            char part[4096];
            const ssize_t size = read(server, part, sizeof(part));
            if (size <= 0) {
                return {};
            }
            received.append(part, static_cast<std::size_t>(size));
        }
    }

private:
    int server;
    std::string received;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: mpv-position SOCKET LOG\n", stderr);
        return 2;
    }
    Conversation mpv(argv[1]);
    std::vector<bench::Answer> answers;
    bench::Millisecond millisecond;
    for (;;) {
        const std::int64_t before = sound::MonotonicNs();
        if (!mpv.Send("{\"command\":[\"get_property\",\"time-pos\"],\"request_id\":7}\n")) {
            break;
        }
        const std::string line = mpv.Receive("\"request_id\":7");
        const std::int64_t after = sound::MonotonicNs();
        if (line.empty()) {
            break;
        }
        const std::size_t data = line.find("\"data\":");
        if (data != std::string::npos && line.find("success") != std::string::npos) {
            answers.push_back({before + (after - before) / 2,
                               std::strtod(line.c_str() + data + 7, nullptr) * 1000.0});
        }
        millisecond.Wait();
    }
    bench::WriteAnswers(argv[2], answers);
    return 0;
}
