// The PipeWire device on a scripted library: which calls it makes, and what it makes of the
// answers.
#include "PipeWireOutput.h"

#include "Clock.h"
#include "OutputTimeline.h"
#include "ScriptedPipeWire.h"
#include "TimelineDevice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

using devices::Calls;
using devices::Counter;
using devices::ExpectNear;
using devices::script;
using devices::ScriptedPipeWire;
using sound::DeviceFeed;
using sound::OutputTimeline;
using sound::PipeWireOutput;

namespace {

constexpr std::uint32_t frameBytes = 2 * sizeof(float);

class PipeWireOutputTest : public testing::Test {
protected:
    PipeWireOutputTest() {
        script = ScriptedPipeWire();
        script.space.resize(std::size_t{2} * 8192);
        script.time.rate = {1, 44100};
    }

    void ExpectRefused() {
        EXPECT_FALSE(PipeWireOutput(feed).Start());
        EXPECT_EQ(std::count(script.calls.begin(), script.calls.end(), "stream_connect"), 0);
    }

    // A cycle of the graph that wants @p frames, and begins @p ns after the first.
    void Cycle(std::uint64_t frames, std::int64_t ns) {
        script.requested = frames;
        script.time.now = beginNs + ns;
        script.streamEvents->process(script.listener);
    }

    Counter counter;
    const std::int64_t beginNs = sound::MonotonicNs();
    OutputTimeline timeline{counter.AsSource(), beginNs};
    DeviceFeed feed{timeline, DeviceFeed::Reports::Exact};
};

} // namespace

TEST_F(PipeWireOutputTest, IsNoneWithoutTheLibrary) {
    script.isInstalled = false;

    ExpectRefused();
    EXPECT_EQ(script.calls, Calls());
}

TEST_F(PipeWireOutputTest, IsNoneWithoutADaemon) {
    script.hasDaemon = false;

    ExpectRefused();
    EXPECT_EQ(script.calls, Calls({"context_new", "lock", "context_connect", "unlock", "loop_stop",
                                   "context_destroy", "loop_destroy"}));
}

TEST_F(PipeWireOutputTest, IsNoneIfTheDaemonDoesNotAnswer) {
    script.answers = false;

    ExpectRefused();
}

TEST_F(PipeWireOutputTest, IsNoneIfTheDaemonDiesBeforeItAnswers) {
    script.dies = true;

    ExpectRefused();
    EXPECT_TRUE(feed.HasFailed());
}

TEST_F(PipeWireOutputTest, IsNoneWithoutASink) {
    for (const char* mediaClass : {"Audio/Source", "Video/Source", "Stream/Output/Audio"}) {
        script.mediaClass = mediaClass;

        ExpectRefused();
    }
}

TEST_F(PipeWireOutputTest, PlaysToAnyKindOfSink) {
    for (const char* mediaClass : {"Audio/Sink", "Audio/Sink/Virtual", "Audio/Duplex"}) {
        script.mediaClass = mediaClass;

        EXPECT_TRUE(PipeWireOutput(feed).Start()) << mediaClass;
    }
}

TEST_F(PipeWireOutputTest, OpensItsStreamWithTheLoopLockedAndEndsTheLoopFirst) {
    {
        EXPECT_TRUE(PipeWireOutput(feed).Start());
    }

    EXPECT_EQ(script.calls,
              Calls({"context_new", "lock", "context_connect", "sync", "wait", "stream_new",
                     "stream_connect", "unlock", "loop_stop", "stream_destroy", "proxy_destroy",
                     "core_disconnect", "context_destroy", "loop_destroy"}));
}

TEST_F(PipeWireOutputTest, IsAStereoStreamOfFloatsThatIsServedInRealTime) {
    PipeWireOutput output(feed);
    ASSERT_TRUE(output.Start());

    EXPECT_EQ(script.format.format, SPA_AUDIO_FORMAT_F32);
    EXPECT_EQ(script.format.rate, 44100U);
    EXPECT_EQ(script.format.channels, 2U);
    EXPECT_EQ(script.format.position[0], static_cast<std::uint32_t>(SPA_AUDIO_CHANNEL_FL));
    EXPECT_EQ(script.format.position[1], static_cast<std::uint32_t>(SPA_AUDIO_CHANNEL_FR));
    EXPECT_EQ(script.flags,
              static_cast<std::uint32_t>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS |
                                         PW_STREAM_FLAG_RT_PROCESS));
    EXPECT_EQ(script.streamProperties["media.role"], "Music");
    EXPECT_EQ(script.streamProperties["application.name"], "Skovra");
    EXPECT_EQ(script.streamProperties["node.latency"], "8192/44100");
}

TEST_F(PipeWireOutputTest, AsksForTheConfigurationThatGivesRealTimePriority) {
    const std::map<const char*, std::string> configurations = {{"0.3.65", "client-rt.conf"},
                                                               {"1.2.7", "client-rt.conf"},
                                                               {"1.3.0", "client.conf"},
                                                               {"1.4.2", "client.conf"},
                                                               {"2.0.0", "client.conf"}};
    for (const auto& [version, configuration] : configurations) {
        script.version = version;

        EXPECT_TRUE(PipeWireOutput(feed).Start());
        EXPECT_EQ(script.contextProperties["config.name"], configuration) << version;
    }
}

TEST_F(PipeWireOutputTest, GivesEachCycleWhatItWantsAndNoMore) {
    PipeWireOutput output(feed);
    ASSERT_TRUE(output.Start());

    Cycle(1024, 0);

    EXPECT_EQ(script.chunk.size, 1024 * frameBytes);
    EXPECT_EQ(script.chunk.stride, static_cast<std::int32_t>(frameBytes));
    EXPECT_EQ(script.chunk.offset, 0U);
    EXPECT_EQ(script.buffer.size, 1024U);
    EXPECT_EQ(std::count(script.calls.begin(), script.calls.end(), "queue"), 1);
}

TEST_F(PipeWireOutputTest, GivesNoMoreThanThereIsSpaceFor) {
    PipeWireOutput output(feed);
    ASSERT_TRUE(output.Start());

    Cycle(0, 0); // it does not say
    EXPECT_EQ(script.chunk.size, 8192 * frameBytes);
    Cycle(std::uint64_t{1} << 33, 1'000'000);
    EXPECT_EQ(script.chunk.size, 8192 * frameBytes);
    script.space.clear();
    Cycle(1024, 2'000'000);
    EXPECT_EQ(script.chunk.size, 0U);
}

TEST_F(PipeWireOutputTest, GivesNothingWithoutABuffer) {
    PipeWireOutput output(feed);
    ASSERT_TRUE(output.Start());
    script.hasBuffer = false;

    Cycle(1024, 0);

    EXPECT_EQ(std::count(script.calls.begin(), script.calls.end(), "queue"), 0);
    EXPECT_FALSE(feed.WasAsked());
}

// To the frame, from the first that the device plays on: what is in a cycle is heard from that
// cycle's time and the delay on.
TEST_F(PipeWireOutputTest, KeepsTheTimeThatTheGraphTells) {
    constexpr std::int64_t quantum = 441;
    constexpr std::int64_t cycleNs = 10'000'000;
    PipeWireOutput output(feed);
    ASSERT_TRUE(output.Start());
    script.time.delay = 882;

    int compared = 0;
    for (std::int64_t cycle = 0; cycle < 90; ++cycle) {
        const std::int64_t ns = cycle * cycleNs;
        timeline.AdvanceSilence(beginNs + ns);
        Cycle(quantum, ns);
        const auto first = static_cast<std::int64_t>(script.space[0]); // its number plus one
        if (timeline.IsSounding() && first > 0 && ++compared > 2) {    // the first two fade in
            const std::int64_t heardNs = beginNs + ns + script.time.delay * 1'000'000'000 / 44100;
            ExpectNear(timeline.HeardFrames(heardNs), first - 1, 1);
        }
        if (cycle == 60) {
            script.time.delay = 1764; // the way has become longer
        }
    }
    EXPECT_GT(compared, 60);
}

TEST_F(PipeWireOutputTest, FailsWhenTheConnectionIsLost) {
    PipeWireOutput output(feed);
    ASSERT_TRUE(output.Start());

    script.coreEvents->error(script.listener, 17, 0, -ENOENT, "of some other object");
    EXPECT_FALSE(feed.HasFailed());
    script.coreEvents->error(script.listener, PW_ID_CORE, 0, -EPIPE, "connection error");
    EXPECT_TRUE(feed.HasFailed());
}

TEST_F(PipeWireOutputTest, FailsWhenItsStreamDoes) {
    const auto failsIn = [this](pw_stream_state state) {
        DeviceFeed other(timeline, DeviceFeed::Reports::Exact);
        PipeWireOutput output(other);
        EXPECT_TRUE(output.Start());
        script.streamEvents->state_changed(script.listener, PW_STREAM_STATE_STREAMING, state, "");
        return other.HasFailed();
    };

    EXPECT_FALSE(failsIn(PW_STREAM_STATE_PAUSED)); // it waits for a link
    EXPECT_FALSE(failsIn(PW_STREAM_STATE_STREAMING));
    EXPECT_TRUE(failsIn(PW_STREAM_STATE_UNCONNECTED));
    EXPECT_TRUE(failsIn(PW_STREAM_STATE_ERROR));
}
