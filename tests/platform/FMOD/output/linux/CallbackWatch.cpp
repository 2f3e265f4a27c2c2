// Preloaded into a program that plays through cubeb or PipeWire: watches what its callback does.
//
// At exit the file $CALLBACK_WATCH gets a line "SYSTEM callbacks COUNT", with cubeb or pipewire,
// and a line "NAME COUNT" for each kind of what no such callback may do: allocate, lock, wait, or
// call the system. System calls are seen twice: some by the name of their function, and, where the
// kernel can tell (Linux 5.11, not every processor), the first of each callback by its number,
// whoever makes it: "system call 35". The clock, which is read without a system call, is free. So
// is getpid within cubeb_stream_get_position, by which libpulse makes sure that it is not in a
// forked process: it never waits, and there is no way to the position without it.

#include <cubeb/cubeb.h>
#include <pipewire/stream.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <dlfcn.h>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/epoll.h>
#include <sys/prctl.h>
#include <sys/select.h>
#include <ucontext.h>
#include <unistd.h>

// What is behind malloc and the others: there is no looking them up without them.
extern "C" {
void* RealMalloc(std::size_t size) __asm__("__libc_malloc");
void* RealCalloc(std::size_t count, std::size_t size) __asm__("__libc_calloc");
void* RealRealloc(void* block, std::size_t size) __asm__("__libc_realloc");
void* RealMemalign(std::size_t alignment, std::size_t size) __asm__("__libc_memalign");
void RealFree(void* block) __asm__("__libc_free");
}

namespace {

struct Tally {
    std::atomic<const char*> name{nullptr}; // null: a system call, by its number
    std::atomic<long> number{-1};
    std::atomic<unsigned int> count{0};
};

// A thread's own without a call for it: none of this may itself allocate.
#define PLAIN_THREAD_LOCAL thread_local __attribute__((tls_model("initial-exec")))
PLAIN_THREAD_LOCAL bool inCallback = false;
PLAIN_THREAD_LOCAL bool inPosition = false;
PLAIN_THREAD_LOCAL bool dispatched = false; // the kernel knows the switch of this thread
PLAIN_THREAD_LOCAL volatile char systemCallsBlocked = 0;

std::array<Tally, 64> tallies;
std::atomic<std::size_t> tallyCount{0};
std::atomic<unsigned int> cubebCallbacks{0};
std::atomic<unsigned int> pipewireCallbacks{0};
std::atomic<bool> systemCallsUnseen{false};

void Count(const char* name, long number) {
    const std::size_t known = tallyCount.load();
    for (std::size_t i = 0; i < known; ++i) {
        if (tallies[i].name == name && tallies[i].number == number) {
            ++tallies[i].count;
            return;
        }
    }
    if (known < tallies.size()) { // one callback at a time: nobody else adds
        tallies[known].name = name;
        tallies[known].number = number;
        tallies[known].count = 1;
        tallyCount = known + 1;
    }
}

void Note(const char* name) {
    if (inCallback) {
        Count(name, -1);
    }
}

// A blocked system call was not made. Counts it, and lets it and the callback's further ones pass.
void CountSystemCall(int, siginfo_t* info, [[maybe_unused]] void* context) {
    systemCallsBlocked = 0;
    Count(nullptr, info->si_syscall);
#if defined(__x86_64__)
    auto& registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    constexpr int instructionBytes = 2;
    registers[REG_RIP] -= instructionBytes;
    registers[REG_RAX] = info->si_syscall;
#endif
}

void DispatchSystemCalls() {
    dispatched = true;
#if defined(__x86_64__) && defined(PR_SET_SYSCALL_USER_DISPATCH)
    if (prctl(PR_SET_SYSCALL_USER_DISPATCH, PR_SYS_DISPATCH_ON, 0, 0, &systemCallsBlocked) == 0) {
        return;
    }
#endif
    systemCallsUnseen = true;
}

class InCallback {
public:
    explicit InCallback(std::atomic<unsigned int>& callbacks) {
        if (!dispatched) {
            DispatchSystemCalls();
        }
        ++callbacks;
        inCallback = true;
        systemCallsBlocked = systemCallsUnseen ? 0 : 1;
    }
    InCallback(const InCallback&) = delete;
    InCallback& operator=(const InCallback&) = delete;
    ~InCallback() {
        systemCallsBlocked = 0;
        inCallback = false;
    }
};

struct Watched {
    cubeb_data_callback data;
    cubeb_state_callback state;
    void* user;
};

long WatchData(cubeb_stream* stream, void* user, const void* input, void* output, long frames) {
    const auto* watched = static_cast<Watched*>(user);
    const InCallback inside(cubebCallbacks);
    return watched->data(stream, watched->user, input, output, frames);
}

void PassState(cubeb_stream* stream, void* user, cubeb_state state) {
    const auto* watched = static_cast<Watched*>(user);
    watched->state(stream, watched->user, state);
}

/// A listener beside the program's own, which it has the process event of.
struct WatchedStream {
    void (*process)(void* user);
    void* user;
    pw_stream_events others;
    pw_stream_events ours;
    spa_hook hook;
};

void WatchProcess(void* user) {
    const auto* watched = static_cast<WatchedStream*>(user);
    const InCallback inside(pipewireCallbacks);
    watched->process(watched->user);
}

decltype(&pw_stream_add_listener) addListener = nullptr; // the library's

void AddWatchedListener(pw_stream* stream, spa_hook* listener, const pw_stream_events* events,
                        void* user) {
    auto* watched =
        new WatchedStream{events->process, user, *events, {}, {}}; // as long as the process
    watched->others.process = nullptr;
    watched->ours.version = PW_VERSION_STREAM_EVENTS;
    watched->ours.process = WatchProcess;
    addListener(stream, listener, &watched->others, user);
    addListener(stream, &watched->hook, &watched->ours, watched);
}

__attribute__((constructor)) void Begin() {
    struct sigaction action = {};
    action.sa_sigaction = CountSystemCall;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
}

__attribute__((destructor)) void Report() {
    const char* path = std::getenv("CALLBACK_WATCH");
    const bool seen = cubebCallbacks + pipewireCallbacks > 0;
    std::FILE* file = path != nullptr && seen ? std::fopen(path, "w") : nullptr;
    if (file == nullptr) {
        return;
    }
    std::fprintf(file, "cubeb callbacks %u\n", cubebCallbacks.load());
    std::fprintf(file, "pipewire callbacks %u\n", pipewireCallbacks.load());
    if (systemCallsUnseen) {
        std::fprintf(file, "the kernel does not show system calls\n");
    }
    for (std::size_t i = 0; i < tallyCount; ++i) {
        if (const char* name = tallies[i].name) {
            std::fprintf(file, "%s %u\n", name, tallies[i].count.load());
        } else {
            std::fprintf(file, "system call %ld %u\n", tallies[i].number.load(),
                         tallies[i].count.load());
        }
    }
    std::fclose(file);
}

// What is found is kept without the guard that a local variable of another kind has: threads wait
// for one another at that by a system call, which is looked up here, too.
template <typename Function>
using Found = std::atomic<Function*>;

// The C library's dlsym, which below has another in its place.
void* RealDlsym(void* library, const char* name) {
    using Dlsym = void*(void*, const char*);
    static constinit Found<Dlsym> found{nullptr};
    if (found == nullptr) {
        found = reinterpret_cast<Dlsym*>(dlvsym(RTLD_NEXT, "dlsym", "GLIBC_2.34"));
    }
    return found.load()(library, name);
}

// Some have an older version besides, which dlsym might give.
template <typename Function>
Function* Next(Found<Function>& found, const char* name) {
    if (found == nullptr) {
        void* next = nullptr;
        if (std::string_view(name).starts_with("pthread_cond_")) {
            next = dlvsym(RTLD_NEXT, name, "GLIBC_2.3.2");
        }
        if (next == nullptr) {
            next = RealDlsym(RTLD_NEXT, name);
        }
        found = reinterpret_cast<Function*>(next);
    }
    return found;
}

} // namespace

// Takes the place of the function @p name, and notes the call. The C library gives its functions
// attributes that need not be repeated under another name.
#define REPLACE(result, name, parameters)                                                          \
    extern "C" result Watched_##name parameters __asm__(#name);                                    \
    extern "C" result Watched_##name parameters

#define WATCH(result, name, parameters, arguments)                                                 \
    REPLACE(result, name, parameters) {                                                            \
        static constinit Found<decltype(Watched_##name)> found{nullptr};                           \
        auto* const next = Next(found, #name);                                                     \
        Note(#name);                                                                               \
        return next arguments;                                                                     \
    }

REPLACE(int, cubeb_stream_init,
        (cubeb * context, cubeb_stream** stream, const char* name, cubeb_devid inputDevice,
         cubeb_stream_params* input, cubeb_devid outputDevice, cubeb_stream_params* output,
         unsigned int latencyFrames, cubeb_data_callback data, cubeb_state_callback state,
         void* user)) {
    static constinit Found<decltype(cubeb_stream_init)> found{nullptr};
    auto* watched = new Watched{data, state, user}; // as long as the process
    return Next(found, "cubeb_stream_init")(context, stream, name, inputDevice, input, outputDevice,
                                            output, latencyFrames, WatchData, PassState, watched);
}

// PipeWire's library is loaded, and its functions are looked up, at run time.
REPLACE(void*, dlsym, (void* library, const char* name)) {
    void* found = RealDlsym(library, name);
    if (found != nullptr && std::string_view(name) == "pw_stream_add_listener") {
        addListener = reinterpret_cast<decltype(addListener)>(found);
        return reinterpret_cast<void*>(AddWatchedListener);
    }
    return found;
}

REPLACE(int, cubeb_stream_get_position, (cubeb_stream * stream, std::uint64_t* position)) {
    static constinit Found<decltype(cubeb_stream_get_position)> found{nullptr};
    inPosition = true;
    const int result = Next(found, "cubeb_stream_get_position")(stream, position);
    inPosition = false;
    return result;
}

REPLACE(pid_t, getpid, ()) {
    static constinit Found<pid_t()> found{nullptr};
    if (!inPosition) {
        Note("getpid");
    }
    const char blocked = systemCallsBlocked;
    systemCallsBlocked = 0;
    const pid_t process = Next(found, "getpid")();
    systemCallsBlocked = blocked;
    return process;
}

REPLACE(void*, malloc, (std::size_t size)) {
    Note("malloc");
    return RealMalloc(size);
}

REPLACE(void*, calloc, (std::size_t count, std::size_t size)) {
    Note("calloc");
    return RealCalloc(count, size);
}

REPLACE(void*, realloc, (void* block, std::size_t size)) {
    Note("realloc");
    return RealRealloc(block, size);
}

REPLACE(void*, aligned_alloc, (std::size_t alignment, std::size_t size)) {
    Note("aligned_alloc");
    return RealMemalign(alignment, size);
}

REPLACE(void, free, (void* block)) {
    Note("free");
    RealFree(block);
}

WATCH(int, posix_memalign, (void** block, std::size_t alignment, std::size_t size),
      (block, alignment, size))

WATCH(int, pthread_mutex_lock, (pthread_mutex_t * mutex), (mutex))
WATCH(int, pthread_mutex_trylock, (pthread_mutex_t * mutex), (mutex))
WATCH(int, pthread_mutex_timedlock, (pthread_mutex_t * mutex, const timespec* end), (mutex, end))
WATCH(int, pthread_rwlock_rdlock, (pthread_rwlock_t * lock), (lock))
WATCH(int, pthread_rwlock_wrlock, (pthread_rwlock_t * lock), (lock))
WATCH(int, pthread_rwlock_tryrdlock, (pthread_rwlock_t * lock), (lock))
WATCH(int, pthread_rwlock_trywrlock, (pthread_rwlock_t * lock), (lock))
WATCH(int, pthread_spin_lock, (pthread_spinlock_t * lock), (lock))
WATCH(int, pthread_cond_wait, (pthread_cond_t * condition, pthread_mutex_t* mutex),
      (condition, mutex))
WATCH(int, pthread_cond_timedwait,
      (pthread_cond_t * condition, pthread_mutex_t* mutex, const timespec* end),
      (condition, mutex, end))
WATCH(int, pthread_cond_clockwait,
      (pthread_cond_t * condition, pthread_mutex_t* mutex, clockid_t clock, const timespec* end),
      (condition, mutex, clock, end))
WATCH(int, pthread_cond_signal, (pthread_cond_t * condition), (condition))
WATCH(int, pthread_cond_broadcast, (pthread_cond_t * condition), (condition))
WATCH(int, pthread_create,
      (pthread_t * thread, const pthread_attr_t* attributes, void* (*run)(void*), void* argument),
      (thread, attributes, run, argument))
WATCH(int, pthread_join, (pthread_t thread, void** answer), (thread, answer))
WATCH(int, sem_wait, (sem_t * semaphore), (semaphore))
WATCH(int, sem_timedwait, (sem_t * semaphore, const timespec* end), (semaphore, end))
WATCH(int, sem_post, (sem_t * semaphore), (semaphore))

WATCH(int, nanosleep, (const timespec* time, timespec* left), (time, left))
WATCH(int, clock_nanosleep, (clockid_t clock, int flags, const timespec* time, timespec* left),
      (clock, flags, time, left))
WATCH(int, usleep, (useconds_t time), (time))
WATCH(int, sched_yield, (), ())
WATCH(int, poll, (pollfd * files, nfds_t count, int ms), (files, count, ms))
WATCH(int, ppoll, (pollfd * files, nfds_t count, const timespec* time, const sigset_t* mask),
      (files, count, time, mask))
WATCH(int, select, (int count, fd_set* in, fd_set* out, fd_set* failed, timeval* time),
      (count, in, out, failed, time))
WATCH(int, epoll_wait, (int file, epoll_event* events, int count, int ms),
      (file, events, count, ms))
WATCH(ssize_t, read, (int file, void* bytes, std::size_t count), (file, bytes, count))
WATCH(ssize_t, pread, (int file, void* bytes, std::size_t count, off_t from),
      (file, bytes, count, from))
WATCH(ssize_t, write, (int file, const void* bytes, std::size_t count), (file, bytes, count))
WATCH(int, close, (int file), (file))
WATCH(int, open, (const char* path, int flags, mode_t mode), (path, flags, mode))
WATCH(int, ioctl, (int file, unsigned long request, void* argument), (file, request, argument))
WATCH(long, syscall, (long number, long a, long b, long c, long d, long e, long f),
      (number, a, b, c, d, e, f))
WATCH(int, fputs, (const char* text, std::FILE* file), (text, file))
WATCH(int, vfprintf, (std::FILE * file, const char* format, std::va_list arguments),
      (file, format, arguments))
