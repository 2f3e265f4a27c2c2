// Keeps the show running when standard streams are closed at the start, their reader goes away, or
// their file may not grow.
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

/// Runs before main and before other constructors, which may print, without being called.
[[gnu::constructor(101)]] void PrepareStandardStreams() {
    OpenClosedStreams();
    std::signal(SIGPIPE, SIG_IGN); // would end a program whose output is not read
    std::signal(SIGXFSZ, SIG_IGN); // the same where files may not grow (ulimit -f)
}

} // namespace
