#include "File.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sound {

static FMOD_RESULT ResultOf(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
        return FMOD_ERR_FILE_NOTFOUND;
    case EMFILE:
    case ENFILE:
    case ENOMEM:
        return FMOD_ERR_MEMORY;
    default:
        return FMOD_ERR_FILE_BAD;
    }
}

FMOD_RESULT File::Open(const char* path, std::unique_ptr<File>& file) {
    // Non-blocking: nobody may ever open the other end of a named pipe.
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return ResultOf(errno);
    }
    struct stat facts = {};
    if (fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) {
        close(descriptor);
        return FMOD_ERR_FILE_BAD;
    }
    file.reset(new File(descriptor, facts.st_size));
    return FMOD_OK;
}

File::File(int openDescriptor, off_t sizeBytes) : descriptor(openDescriptor), size(sizeBytes) {}

File::~File() {
    close(descriptor);
}

ssize_t File::Read(void* bytes, std::size_t count) {
    count = std::min(count, allowed);
    std::size_t done = 0;
    while (done < count && !interrupted) {
        const ssize_t got = read(descriptor, static_cast<char*>(bytes) + done, count - done);
        if (got == 0) {
            break;
        }
        if (got > 0) {
            done += static_cast<std::size_t>(got);
        } else if (errno != EINTR) {
            failed = true;
            return -1;
        }
    }
    allowed -= done;
    return interrupted ? -1 : static_cast<ssize_t>(done);
}

off_t File::Seek(off_t offset, int whence) {
    return lseek(descriptor, offset, whence);
}

} // namespace sound
