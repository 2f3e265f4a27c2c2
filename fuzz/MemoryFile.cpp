#include "MemoryFile.h"

#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

MemoryFile::MemoryFile(const std::uint8_t* bytes, std::size_t size)
    : descriptor(memfd_create("input", MFD_CLOEXEC)),
      path("/proc/self/fd/" + std::to_string(descriptor)) {
    if (descriptor < 0 || write(descriptor, bytes, size) != static_cast<ssize_t>(size)) {
        std::abort();
    }
}

MemoryFile::~MemoryFile() {
    close(descriptor);
}

} // namespace fuzz
