// The PipeWire device on a scripted library: which calls it makes, and what it makes of the
// answers.
#include "PipeWireOutput.h"

#include "Clock.h"
#include "OutputTimeline.h"
#include "PipeWireLibrary.h"
#include "TimelineDevice.h"

#include <spa/param/audio/format-utils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

using devices::Counter;
using sound::DeviceFeed;
using sound::OutputTimeline;
using sound::PipeWireOutput;

namespace {

using Calls = std::vector<std::string>;
using Properties = std::map<std::string, std::string>;

constexpr std::uint32_t frameBytes = 2 * sizeof(float);

// What the library answers, and what it was asked.
struct Script {
    bool isInstalled = true;
    const char* version = "1.4.2";
    bool hasDaemon = true;
    bool answers = true;
    bool dies = false; // instead of answering
    const char* mediaClass = "Audio/Sink";

    Calls calls;
    Properties contextProperties;
    Properties streamProperties;
    spa_audio_info_raw format = {};
    std::uint32_t flags = 0;

    const pw_core_events* coreEvents = nullptr;
    const pw_registry_events* registryEvents = nullptr;
    const pw_stream_events* streamEvents = nullptr;
    void* listener = nullptr;

    pw_time time = {};
    std::uint64_t requested = 0;
    std::vector<float> space;
    spa_chunk chunk = {};
    spa_data data = {};
    spa_buffer spaBuffer = {};
    pw_buffer buffer = {};
    bool hasBuffer = true;
};

Script script;

void Note(const char* call) {
    script.calls.emplace_back(call);
}

template <typename Object>
Object* Some() {
    static std::max_align_t object;
    return reinterpret_cast<Object*>(&object);
}

Properties Copy(const spa_dict* dictionary) {
    Properties copy;
    for (std::uint32_t i = 0; i < dictionary->n_items; ++i) {
        copy[dictionary->items[i].key] = dictionary->items[i].value;
    }
    return copy;
}

Properties latestProperties;

// The library's functions.

pw_properties* NewProperties(const spa_dict* dictionary) {
    latestProperties = Copy(dictionary);
    return Some<pw_properties>();
}

pw_context* NewContext(pw_loop*, pw_properties*, std::size_t) {
    Note("context_new");
    script.contextProperties = latestProperties;
    return Some<pw_context>();
}

int Sync(void*, std::uint32_t, int) {
    Note("sync");
    return 42;
}

int ListenToCore(void*, spa_hook*, const pw_core_events* events, void* listener) {
    script.coreEvents = events;
    script.listener = listener;
    return 0;
}

int ListenToRegistry(void*, spa_hook*, const pw_registry_events* events, void*) {
    script.registryEvents = events;
    return 0;
}

pw_registry* GetRegistry(void*, std::uint32_t, std::size_t) {
    static const pw_registry_methods methods = [] {
        pw_registry_methods made = {};
        made.add_listener = ListenToRegistry;
        return made;
    }();
    static spa_interface registry = {"", PW_VERSION_REGISTRY, {&methods, nullptr}};
    return reinterpret_cast<pw_registry*>(&registry);
}

pw_core* Connect(pw_context*, pw_properties*, std::size_t) {
    static const pw_core_methods methods = [] {
        pw_core_methods made = {};
        made.add_listener = ListenToCore;
        made.sync = Sync;
        made.get_registry = GetRegistry;
        return made;
    }();
    static spa_interface core = {"", PW_VERSION_CORE, {&methods, nullptr}};
    Note("context_connect");
    return script.hasDaemon ? reinterpret_cast<pw_core*>(&core) : nullptr;
}

// The loop's thread, while the device waits for it.
int Wait() {
    Note("wait");
    if (script.dies) {
        script.coreEvents->error(script.listener, PW_ID_CORE, 0, -EPIPE, "");
        return 0;
    }
    if (!script.answers) {
        return -ETIMEDOUT;
    }
    const spa_dict_item item = {PW_KEY_MEDIA_CLASS, script.mediaClass};
    const spa_dict properties = {0, 1, &item};
    script.registryEvents->global(script.listener, 7, 0, "", 0, nullptr);
    script.registryEvents->global(script.listener, 8, 0, "", 0, &properties);
    script.coreEvents->done(script.listener, PW_ID_CORE, 42);
    return 0;
}

pw_stream* NewStream(pw_core*, const char*, pw_properties*) {
    Note("stream_new");
    script.streamProperties = latestProperties;
    return Some<pw_stream>();
}

void ListenToStream(pw_stream*, spa_hook*, const pw_stream_events* events, void*) {
    script.streamEvents = events;
}

int ConnectStream(pw_stream*, pw_direction, std::uint32_t, pw_stream_flags flags,
                  const spa_pod** parameters, std::uint32_t) {
    Note("stream_connect");
    script.flags = flags;
    spa_format_audio_raw_parse(parameters[0], &script.format);
    return 0;
}

int GetTime(pw_stream*, pw_time* time, std::size_t) {
    *time = script.time;
    return 0;
}

pw_buffer* Dequeue(pw_stream*) {
    script.data.data = script.space.data();
    script.data.maxsize = static_cast<std::uint32_t>(script.space.size() * sizeof(float));
    script.data.chunk = &script.chunk;
    script.spaBuffer.n_datas = 1;
    script.spaBuffer.datas = &script.data;
    script.buffer.buffer = &script.spaBuffer;
    script.buffer.requested = script.requested;
    return script.hasBuffer ? &script.buffer : nullptr;
}

int Queue(pw_stream*, pw_buffer*) {
    Note("queue");
    return 0;
}

const sound::PipeWireLibrary library = {
    .init = [](int*, char***) {},
    .getLibraryVersion = [] { return script.version; },
    .logSetLevel = [](spa_log_level) {},
    .propertiesNewDict = NewProperties,
    .threadLoopNew = [](const char*, const spa_dict*) { return Some<pw_thread_loop>(); },
    .threadLoopDestroy = [](pw_thread_loop*) { Note("loop_destroy"); },
    .threadLoopGetLoop = [](pw_thread_loop*) { return Some<pw_loop>(); },
    .threadLoopStart = [](pw_thread_loop*) { return 0; },
    .threadLoopStop = [](pw_thread_loop*) { Note("loop_stop"); },
    .threadLoopLock = [](pw_thread_loop*) { Note("lock"); },
    .threadLoopUnlock = [](pw_thread_loop*) { Note("unlock"); },
    .threadLoopSignal = [](pw_thread_loop*, bool) {},
    .threadLoopGetTime = [](pw_thread_loop*, timespec*, std::int64_t) { return 0; },
    .threadLoopTimedWaitFull = [](pw_thread_loop*, auto*) { return Wait(); },
    .contextNew = NewContext,
    .contextDestroy = [](pw_context*) { Note("context_destroy"); },
    .contextConnect = Connect,
    .coreDisconnect =
        [](pw_core*) {
            Note("core_disconnect");
            return 0;
        },
    .proxyDestroy = [](pw_proxy*) { Note("proxy_destroy"); },
    .streamNew = NewStream,
    .streamDestroy = [](pw_stream*) { Note("stream_destroy"); },
    .streamAddListener = ListenToStream,
    .streamConnect = ConnectStream,
    .streamGetTimeN = GetTime,
    .streamDequeueBuffer = Dequeue,
    .streamQueueBuffer = Queue,
};

} // namespace

namespace sound {

const PipeWireLibrary* LoadPipeWire() {
    return script.isInstalled ? &library : nullptr;
}

} // namespace sound

namespace {

class PipeWireOutputTest : public testing::Test {
protected:
    PipeWireOutputTest() {
        script = Script();
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
    { EXPECT_TRUE(PipeWireOutput(feed).Start()); }

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
        if (timeline.IsSounding() && first > 0) {
            const std::int64_t heardNs = beginNs + ns + script.time.delay * 1'000'000'000 / 44100;
            EXPECT_NEAR(static_cast<double>(timeline.HeardFrames(heardNs)),
                        static_cast<double>(first - 1), 1.0)
                << cycle;
            ++compared;
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
