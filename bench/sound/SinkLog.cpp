// Preloaded into a PulseAudio server: writes down every block its null sink renders, with the time
// at which the block's first frame is heard. The file is named by SINK_LOG; GroundTruth reads it.
//
// The sink calls pa_sink_render by name, so this one is called in its place, on the sink's own
// thread. No package has headers for the server's inner interface: what is used of it is declared
// here.
#include "SinkLog.h"

#include "Clock.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

extern "C" {

struct pa_sink;
struct pa_memblock;
struct pa_memchunk {
    pa_memblock* memblock;
    std::size_t index;
    std::size_t length;
};

std::int64_t pa_sink_get_latency_within_thread(pa_sink* sink, bool allowNegative);
void* pa_memblock_acquire(pa_memblock* block);
void pa_memblock_release(pa_memblock* block);
void pa_sink_render(pa_sink* sink, std::size_t length, pa_memchunk* result);
}

// The sink knows when the next frame it renders is heard: its latency is that time minus now.
static std::int64_t NextHeardNs(pa_sink* sink) {
    constexpr std::int64_t closeEnoughNs = 3'000;
    std::int64_t before = 0;
    std::int64_t after = 0;
    std::int64_t latencyUs = 0;
    int attempts = 0;
    do {
        before = sound::MonotonicNs();
        latencyUs = pa_sink_get_latency_within_thread(sink, true);
        after = sound::MonotonicNs();
    } while (after - before > closeEnoughNs && ++attempts < 100);
    return (before + after) / 2 + latencyUs * 1000;
}

static int OpenLog() {
    const char* path = std::getenv("SINK_LOG");
    const int log = path == nullptr ? -1 : open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (log < 0) {
        std::perror("SINK_LOG");
        std::exit(2);
    }
    return log;
}

static void Write(int log, const void* data, std::size_t size) {
    if (write(log, data, size) != static_cast<ssize_t>(size)) {
        std::perror("SINK_LOG");
        std::exit(2);
    }
}

void pa_sink_render(pa_sink* sink, std::size_t length, pa_memchunk* result) {
    using Render = void (*)(pa_sink*, std::size_t, pa_memchunk*);
    static const auto render = reinterpret_cast<Render>(dlsym(RTLD_NEXT, "pa_sink_render"));
    static const int log = OpenLog();

    const std::int64_t heardNs = NextHeardNs(sink);
    render(sink, length, result);
    const bench::SinkBlock block = {heardNs, 44100, 0, static_cast<std::int64_t>(result->length)};
    const auto* data = static_cast<const char*>(pa_memblock_acquire(result->memblock));
    Write(log, &block, sizeof(block));
    Write(log, data + result->index, result->length);
    pa_memblock_release(result->memblock);
}
