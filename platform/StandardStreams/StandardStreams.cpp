// Standard streams that were closed when the program was started.
#include <fcntl.h>
#include <unistd.h>

namespace {

/// The next file or connection opened would get a closed stream's number, and be written to by
/// whoever prints. Runs before main; needs nobody to call it.
[[gnu::constructor]] void OpenClosedStreams() {
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR); // the lowest number that is free
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

} // namespace
