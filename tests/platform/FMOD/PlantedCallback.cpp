// A sound callback that does what none may, so that the watch on callbacks has something to find.
#include <cubeb/cubeb.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

static std::mutex mutex;
static std::atomic<int> rounds{0};

// A system call that no function makes.
static void CallSystem() {
#if defined(__x86_64__)
    long answer = SYS_getppid;
    __asm__ volatile("syscall" : "+a"(answer) : : "rcx", "r11", "memory");
#endif
}

static long Fill(cubeb_stream*, void* allocates, const void*, void* output, long frames) {
    if (allocates != nullptr) {
        static void* volatile block; // volatile, or nothing would be allocated
        block = std::malloc(1);
        std::free(block);
        const std::lock_guard<std::mutex> lock(mutex);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    } else {
        CallSystem();
    }
    std::fill_n(static_cast<float*>(output), 2 * frames, 0.0F);
    ++rounds;
    return frames;
}

static void Ignore(cubeb_stream*, void*, cubeb_state) {}

int main(int argc, char**) {
    cubeb* context = nullptr;
    cubeb_stream* stream = nullptr;
    cubeb_stream_params params = {};
    params.format = CUBEB_SAMPLE_FLOAT32NE;
    params.rate = 44100;
    params.channels = 2;
    params.layout = CUBEB_LAYOUT_STEREO;
    void* allocates = argc > 1 ? nullptr : &params;
    if (cubeb_init(&context, "Planted", nullptr) != CUBEB_OK ||
        cubeb_stream_init(context, &stream, "Planted", nullptr, nullptr, nullptr, &params, 4410,
                          Fill, Ignore, allocates) != CUBEB_OK ||
        cubeb_stream_start(stream) != CUBEB_OK) {
        return 1;
    }
    while (rounds < 10) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    cubeb_stream_stop(stream);
    cubeb_stream_destroy(stream);
    cubeb_destroy(context);
    return 0;
}
