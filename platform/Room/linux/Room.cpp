#include "Room.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <exception>
#include <fstream>
#include <latch>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

bool AreDescriptorsFree(int wanted) {
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    int found = 0;
    for (rlim_t each = 0; each < limit.rlim_cur && found < wanted; ++each) {
        if (fcntl(static_cast<int>(each), F_GETFD) < 0 && errno == EBADF) {
            ++found;
        }
    }
    return found == wanted;
}

bool IsAddressSpaceFree(int wantedMebibytes) {
    rlimit limit = {};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) {
        return true;
    }
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t used = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    const rlim_t wanted = static_cast<rlim_t>(wantedMebibytes) << 20U;
    return limit.rlim_cur >= used && limit.rlim_cur - used >= wanted;
}

// A thread that has been joined counts for a moment more. (To yield would not let it end on the
// same processor if this one has real-time priority.)
void AwaitEnd(pid_t thread) {
    while (tgkill(getpid(), thread, 0) == 0) {
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
}

// Nobody says how many the limits of user, container and system leave.
bool CanStartThreads(int wanted) {
    std::latch end(1);
    std::vector<std::thread> started;
    std::vector<pid_t> ids(static_cast<std::size_t>(wanted));
    bool possible = true;
    try {
        started.reserve(ids.size());
        for (pid_t& id : ids) {
            started.emplace_back([&id, &end] {
                id = gettid();
                end.wait();
            });
        }
    } catch (const std::exception&) {
        possible = false;
    }
    end.count_down();
    for (std::size_t i = 0; i < started.size(); ++i) {
        started[i].join();
        AwaitEnd(ids[i]);
    }
    return possible;
}

} // namespace

// The renderer starts two threads a processor, each with a stack and a heap of its own.
Room RoomForShow() noexcept {
    constexpr long mostProcessors = 32;
    const auto threads =
        static_cast<int>(2 * std::min(sysconf(_SC_NPROCESSORS_ONLN), mostProcessors));
    return {12 + threads, 48, 768 + 72 * threads};
}

const char* MissingFrom(const Room& wanted) noexcept {
    if (!AreDescriptorsFree(wanted.descriptors)) {
        return "too few open files are allowed (ulimit -n)";
    }
    if (!IsAddressSpaceFree(wanted.mebibytes)) {
        return "too little memory is allowed (ulimit -v)";
    }
    if (!CanStartThreads(wanted.threads)) {
        return "too few threads are allowed (ulimit -u)";
    }
    return nullptr;
}
