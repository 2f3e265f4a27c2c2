// Decodes on a thread.
#include "Background.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace sound {

namespace {

constexpr std::size_t leastRoom = 4096;

// The output callback does not notify the decode thread, which would be a system call: the decode
// thread polls, once per quarter of the ring. More often costs more, because its code and data have
// left the caches each time.
constexpr std::chrono::milliseconds pollPeriod{250};

class DecodeThread final : public Background {
public:
    explicit DecodeThread(Stream& owner) : stream(owner) {}

    void Start() override;
    void Stop() override;
    void Refill() noexcept override {}
    void WaitUntilReady(std::size_t count, std::chrono::milliseconds limit) override;

private:
    void Run();
    bool AwaitRoom(Stream::Step step);
    void NotifyWaiting();

    Stream& stream;
    std::mutex mutex;
    std::condition_variable wake;  // the decode thread waits for room
    std::condition_variable ready; // others wait for frames
    bool stopping = false;         // under the mutex
    std::atomic<int> waiting{0};
    std::thread thread;
};

void DecodeThread::Start() {
    stopping = false;
    thread = std::thread(&DecodeThread::Run, this);
}

void DecodeThread::Stop() {
    {
        const std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
    }
    stream.InterruptDecoder();
    wake.notify_all();
    if (thread.joinable()) {
        thread.join();
    }
}

void DecodeThread::WaitUntilReady(std::size_t count, std::chrono::milliseconds limit) {
    waiting.fetch_add(1);
    {
        std::unique_lock<std::mutex> lock(mutex);
        wake.notify_all();
        ready.wait_for(lock, limit, [this, count] {
            return stream.Available() >= count || stream.GetSupply() != Stream::Supply::Decoding;
        });
    }
    waiting.fetch_sub(1);
}

void DecodeThread::NotifyWaiting() {
    // Adding 0 orders this after the write to the ring: a thread that began to wait unseen sees it.
    if (waiting.fetch_add(0) > 0) {
        const std::lock_guard<std::mutex> lock(mutex);
        ready.notify_all();
    }
}

// It does not end by itself: a process that exits during the show joins no threads, and one that
// had ended would be reported as leaked.
void DecodeThread::Run() {
    Stream::Step step = Stream::Step::Moved;
    do {
        step = stream.Advance();
        NotifyWaiting();
    } while (step != Stream::Step::Over && AwaitRoom(step));
    std::unique_lock<std::mutex> lock(mutex);
    wake.wait(lock, [this] { return stopping; });
}

// False: stopped.
bool DecodeThread::AwaitRoom(Stream::Step step) {
    std::unique_lock<std::mutex> lock(mutex);
    while (!stopping && step == Stream::Step::Full && stream.Free() < leastRoom) {
        wake.wait_for(lock, pollPeriod);
    }
    return !stopping;
}

} // namespace

std::unique_ptr<Background> Background::Of(Stream& stream) {
    return std::make_unique<DecodeThread>(stream);
}

} // namespace sound
