// Keeps the show running when standard streams are closed at the start, or their reader goes away.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace {

/// The next file or connection opened would get the number of a closed stream, and the program's
/// output would go there.
void OpenClosedStreams() {
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR); // the lowest number that is free
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

/// Runs before main, without being called.
[[gnu::constructor]] void PrepareStandardStreams() {
    OpenClosedStreams();
    std::signal(SIGPIPE, SIG_IGN); // would end a program whose output is not read
}

} // namespace
