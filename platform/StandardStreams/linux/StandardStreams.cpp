// Standard streams that nobody reads or writes, or that were closed when the program was started:
// no reason for a show to break.
#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace {

/// The next file or connection opened would get a closed stream's number, and be written to by
/// whoever prints.
void OpenClosedStreams() {
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR); // the lowest number that is free
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

/// Runs before main; needs nobody to call it.
[[gnu::constructor]] void PrepareStandardStreams() {
    OpenClosedStreams();
    std::signal(SIGPIPE, SIG_IGN); // ends a program that prints and is read by nobody
}

} // namespace
