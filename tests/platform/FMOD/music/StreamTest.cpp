// A stream whose decoder does what the test says.
#include "Stream.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

using sound::Decoder;
using sound::Stream;
using namespace std::chrono_literals;

// Far more than anything here takes.
static constexpr auto giveUp = 20s;

namespace {

// Reads as its script says, and can be waited for.
class ScriptedDecoder final : public Decoder {
public:
    using Script = std::function<Progress(ScriptedDecoder&, std::vector<float>&)>;

    explicit ScriptedDecoder(Script readScript) : script(std::move(readScript)) {}

    Progress Read(std::vector<float>& frames) override { return script(*this, frames); }

    FMOD_RESULT Rewind() override {
        const std::lock_guard<std::mutex> lock(mutex);
        interrupted = false;
        ++rewinds;
        return FMOD_OK;
    }

    void Interrupt() override {
        const std::lock_guard<std::mutex> lock(mutex);
        interrupted = true;
        changed.notify_all();
    }

    // For Read: searches until it is interrupted; false when it never was.
    bool Search() {
        std::unique_lock<std::mutex> lock(mutex);
        searching = true;
        changed.notify_all();
        return changed.wait_for(lock, giveUp, [this] { return interrupted; });
    }

    void AwaitSearch() {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return searching; });
    }

    int rewinds = 0;

private:
    Script script;
    std::mutex mutex;
    std::condition_variable changed;
    bool searching = false;
    bool interrupted = false;
};

// What the next stream opens.
std::unique_ptr<ScriptedDecoder> next;

class StreamTest : public testing::Test {
protected:
    ScriptedDecoder& Open(ScriptedDecoder::Script script) {
        next = std::make_unique<ScriptedDecoder>(std::move(script));
        ScriptedDecoder& decoder = *next;
        EXPECT_EQ(Stream::Open("music", stream), FMOD_OK);
        return decoder;
    }

    std::unique_ptr<Stream> stream;
};

} // namespace

// In place of the one for MP3 files.
FMOD_RESULT Decoder::Open(const char*, std::unique_ptr<Decoder>& decoder) {
    decoder = std::move(next);
    return FMOD_OK;
}

TEST_F(StreamTest, BeginsAgainWhileItsDecoderSearches) {
    bool wasInterrupted = false;
    ScriptedDecoder& decoder =
        Open([&](ScriptedDecoder& self, std::vector<float>& frames) -> Decoder::Progress {
            if (self.rewinds > 0) {
                frames.assign(20, 0.5F);
            } else {
                wasInterrupted = self.Search();
            }
            return Decoder::Progress::End;
        });
    decoder.AwaitSearch();

    EXPECT_EQ(stream->Rewind(), FMOD_OK);

    EXPECT_TRUE(wasInterrupted);
    stream->WaitUntilReady(100, giveUp);
    EXPECT_EQ(stream->GetSupply(), Stream::Supply::Ended);
    std::vector<float> frames(200);
    EXPECT_EQ(stream->Read(frames.data(), 100), 10U);
}

TEST_F(StreamTest, IsClosedWhileItsDecoderSearches) {
    bool wasInterrupted = false;
    Open([&](ScriptedDecoder& self, std::vector<float>&) {
        wasInterrupted = self.Search();
        return Decoder::Progress::Failed;
    }).AwaitSearch();

    stream.reset();

    EXPECT_TRUE(wasInterrupted);
}

TEST_F(StreamTest, BreaksWhereMemoryRunsOut) {
    int reads = 0;
    Open([&](ScriptedDecoder&, std::vector<float>& frames) {
        if (++reads == 2) {
            throw std::bad_alloc();
        }
        frames.assign(20, 0.5F);
        return Decoder::Progress::Frames;
    });

    stream->WaitUntilReady(100, giveUp);

    EXPECT_EQ(stream->GetSupply(), Stream::Supply::Broken);
    std::vector<float> frames(200);
    EXPECT_EQ(stream->Read(frames.data(), 100), 10U);
    reads = 10;
    EXPECT_EQ(stream->Rewind(), FMOD_OK);
    stream->WaitUntilReady(100, giveUp);
    EXPECT_EQ(stream->Read(frames.data(), 100), 100U);
}
