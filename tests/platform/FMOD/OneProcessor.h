// A thread that holds something, and one that waits for it, on the same processor.
#pragma once

#include <cstdint>
#include <ctime>
#include <thread>

#include <pthread.h>
#include <sched.h>

namespace processor {

/// Processor time of the calling thread, in ns.
inline std::int64_t UsedNs() {
    timespec used = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return std::int64_t{used.tv_sec} * 1'000'000'000 + used.tv_nsec;
}

inline void BusyFor(std::int64_t ns) {
    for (const std::int64_t end = UsedNs() + ns; UsedNs() < end;) {
    }
}

inline void BindToFirst() {
    cpu_set_t usable;
    sched_getaffinity(0, sizeof(usable), &usable);
    int first = 0;
    while (!CPU_ISSET(first, &usable)) {
        ++first;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(first, &one);
    sched_setaffinity(0, sizeof(one), &one);
}

/// Runs @p hold, and beside it on the same processor @p wait, with real-time priority where the
/// system grants that. The processor time that @p wait took, in ns: next to none if it slept.
template <typename Hold, typename Wait>
std::int64_t UsedWaiting(Hold hold, Wait wait) {
    std::int64_t used = 0;
    std::thread holder([&] {
        BindToFirst();
        hold();
    });
    std::thread waiter([&] {
        BindToFirst();
#if !defined(__SANITIZE_THREAD__) // that sanitizer's own locks wait by yielding
        sched_param priority = {};
        priority.sched_priority = sched_get_priority_min(SCHED_RR);
        pthread_setschedparam(pthread_self(), SCHED_RR, &priority);
#endif
        const std::int64_t before = UsedNs();
        wait();
        used = UsedNs() - before;
    });
    holder.join();
    waiter.join();
    return used;
}

} // namespace processor
