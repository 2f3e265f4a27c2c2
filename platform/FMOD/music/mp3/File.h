// A file to stream from; distinguishes read errors from the end of the file.
#pragma once

#include <FMOD/FMOD.h>

#include <atomic>
#include <cstddef>
#include <limits>
#include <memory>

#include <sys/types.h>

namespace sound {

/// A regular file open for reading.
class File {
public:
    /// FMOD_ERR_FILE_NOTFOUND: no such file, or an empty path. FMOD_ERR_FILE_BAD: no permission
    /// to read it, or it is a directory, a pipe or a device. FMOD_ERR_MEMORY: too many open files.
    static FMOD_RESULT Open(const char* path, std::unique_ptr<File>& file);

    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File();

    off_t Size() const { return size; }

    /// Reads up to @p count bytes, fewer only at the end, or where no more are allowed; -1 on an
    /// error, which Failed reports.
    ssize_t Read(void* bytes, std::size_t count);

    /// As lseek(2).
    off_t Seek(off_t offset, int whence);

    bool Failed() const { return failed; }

    /// From now on Read reads @p bytes bytes in all; without a call there is no limit.
    void Allow(std::size_t bytes) { allowed = bytes; }

    /// Any thread: from now on every Read fails, until Resume.
    void Interrupt() { interrupted = true; }
    void Resume() { interrupted = false; }

private:
    File(int openDescriptor, off_t sizeBytes);

    int descriptor;
    off_t size;
    std::size_t allowed = std::numeric_limits<std::size_t>::max();
    bool failed = false;
    std::atomic<bool> interrupted{false};
};

} // namespace sound
