// What happens when the library reads a file: the linker leads its read(2) here (--wrap=read).
#include "ReadScript.h"

#include <cerrno>
#include <condition_variable>
#include <limits>
#include <mutex>

#include <sys/types.h>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::mutex mutex;
std::condition_variable changed;
std::size_t bytesRead = 0;
std::size_t failAfter = never;
std::size_t holdAfter = never;
int held = 0;

} // namespace

namespace reads {

void Reset() {
    const std::lock_guard<std::mutex> lock(mutex);
    bytesRead = 0;
    failAfter = never;
    holdAfter = never;
    changed.notify_all();
}

std::size_t BytesRead() {
    const std::lock_guard<std::mutex> lock(mutex);
    return bytesRead;
}

void FailAfter(std::size_t bytes) {
    const std::lock_guard<std::mutex> lock(mutex);
    failAfter = bytes;
}

void HoldAfter(std::size_t bytes) {
    const std::lock_guard<std::mutex> lock(mutex);
    holdAfter = bytes;
}

void AwaitHeld() {
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait(lock, [] { return held > 0; });
}

void Release() {
    const std::lock_guard<std::mutex> lock(mutex);
    holdAfter = never;
    changed.notify_all();
}

} // namespace reads

extern "C" ssize_t __real_read(int descriptor, void* bytes, std::size_t count);

extern "C" ssize_t __wrap_read(int descriptor, void* bytes, std::size_t count);

extern "C" ssize_t __wrap_read(int descriptor, void* bytes, std::size_t count) {
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (bytesRead >= holdAfter) {
            ++held;
            changed.notify_all();
            changed.wait(lock, [] { return bytesRead < holdAfter; });
            --held;
        }
        if (bytesRead >= failAfter) {
            errno = EIO;
            return -1;
        }
    }
    const ssize_t got = __real_read(descriptor, bytes, count);
    const std::lock_guard<std::mutex> lock(mutex);
    bytesRead += got > 0 ? static_cast<std::size_t>(got) : 0;
    return got;
}
