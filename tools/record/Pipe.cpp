#include "Pipe.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace record {

// Fewer switches between the two programs than with the default of 64 KiB.
static constexpr int wantedBytes = 1 << 20;

Pipe::Pipe() {
    std::array<int, 2> ends = {-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "no pipe");
    }
    readingEnd = ends[0];
    writingEnd = ends[1];
    fcntl(writingEnd, F_SETPIPE_SZ, wantedBytes); // if refused, the default will do
    fcntl(writingEnd, F_SETFL, O_NONBLOCK);
}

Pipe::~Pipe() {
    CloseReadingEnd();
    CloseWritingEnd();
}

std::optional<std::size_t> Pipe::Write(const void* bytes, std::size_t count) const {
    const ssize_t written = write(writingEnd, bytes, count);
    if (written >= 0) {
        return static_cast<std::size_t>(written);
    }
    const bool full = errno == EAGAIN || errno == EINTR;
    return full ? std::optional<std::size_t>(0) : std::nullopt;
}

void Pipe::Close(int& descriptor) {
    if (descriptor >= 0) {
        close(descriptor);
        descriptor = -1;
    }
}

} // namespace record
