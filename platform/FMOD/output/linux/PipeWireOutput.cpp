#include "PipeWireOutput.h"

#include "Clock.h"
#include "Output.h"
#include "OutputTimeline.h"
#include "PipeWireLibrary.h"
#include "PipeWireTime.h"

#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace sound {

static constexpr std::int64_t answerPatienceNs = 1'000'000'000;
static constexpr std::uint32_t frameBytes = 2 * sizeof(float);

// The most that may be requested from the stream at once, and so its buffer: as much as with other
// devices, if the daemon's own limit (by default 2048 frames) allows.
static constexpr const char* latency = "8192/44100";

namespace {

template <std::size_t count>
pw_properties* PropertiesOf(const PipeWireLibrary& pipewire,
                            const std::array<spa_dict_item, count>& items) {
    const spa_dict dictionary = {0, count, items.data()};
    return pipewire.propertiesNewDict(&dictionary);
}

// The methods of an object of the daemon; the library's own macros for them are not standard C++.
template <typename Methods>
struct Interface {
    template <typename Object>
    explicit Interface(Object* proxy)
        : methods(*static_cast<const Methods*>(reinterpret_cast<spa_interface*>(proxy)->cb.funcs)),
          object(reinterpret_cast<spa_interface*>(proxy)->cb.data) {}

    const Methods& methods;
    void* object;
};

bool IsSink(const spa_dict* properties) {
    const char* kind =
        properties == nullptr ? nullptr : spa_dict_lookup(properties, PW_KEY_MEDIA_CLASS);
    const std::string_view name = kind == nullptr ? "" : kind;
    return name.starts_with("Audio/Sink") || name == "Audio/Duplex";
}

} // namespace

/// The connection to the daemon. Its events come on the library's threads: all but Process on the
/// loop's, with the loop locked.
class PipeWireOutput::Connection {
public:
    Connection(const PipeWireLibrary& loaded, DeviceFeed& fed);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    bool Open();

private:
    bool Connect();
    bool AwaitSinks();
    bool OpenStream();

    static void OnDone(void* self, std::uint32_t id, int sequence);
    static void OnError(void* self, std::uint32_t id, int sequence, int result, const char* text);
    static void OnGlobal(void* self, std::uint32_t id, std::uint32_t permissions, const char* type,
                         std::uint32_t version, const spa_dict* properties);
    static void OnState(void* self, pw_stream_state before, pw_stream_state now, const char* error);
    static void Process(void* self);

    const PipeWireLibrary& pipewire;
    DeviceFeed& feed;
    pw_thread_loop* loop = nullptr;
    pw_context* context = nullptr;
    pw_core* core = nullptr;
    pw_registry* registry = nullptr;
    pw_stream* stream = nullptr;
    pw_core_events coreEvents = {};
    pw_registry_events registryEvents = {};
    pw_stream_events streamEvents = {};
    spa_hook coreHook = {};
    spa_hook registryHook = {};
    spa_hook streamHook = {};
    int awaited = 0; // the request whose answer ends the list of objects
    bool answered = false;
    bool lost = false;
    bool hasSink = false;
    std::int64_t written = 0; // Process only
};

PipeWireOutput::Connection::Connection(const PipeWireLibrary& loaded, DeviceFeed& fed)
    : pipewire(loaded), feed(fed) {
    coreEvents.version = PW_VERSION_CORE_EVENTS;
    coreEvents.done = OnDone;
    coreEvents.error = OnError;
    registryEvents.version = PW_VERSION_REGISTRY_EVENTS;
    registryEvents.global = OnGlobal;
    streamEvents.version = PW_VERSION_STREAM_EVENTS;
    streamEvents.state_changed = OnState;
    streamEvents.process = Process;
}

// After the loop's thread has ended, nothing but Process is called any more; its thread ends with
// the context.
PipeWireOutput::Connection::~Connection() {
    if (loop != nullptr) {
        pipewire.threadLoopStop(loop);
    }
    if (stream != nullptr) {
        pipewire.streamDestroy(stream);
    }
    if (registry != nullptr) {
        pipewire.proxyDestroy(reinterpret_cast<pw_proxy*>(registry));
    }
    if (core != nullptr) {
        pipewire.coreDisconnect(core);
    }
    if (context != nullptr) {
        pipewire.contextDestroy(context);
    }
    if (loop != nullptr) {
        pipewire.threadLoopDestroy(loop);
    }
}

bool PipeWireOutput::Connection::Open() {
    loop = pipewire.threadLoopNew("skovra-pipewire", nullptr);
    if (loop == nullptr) {
        return false;
    }
    const std::array<spa_dict_item, 1> properties = {
        {{PW_KEY_CONFIG_NAME, RealTimeConfiguration(pipewire.getLibraryVersion())}}};
    context = pipewire.contextNew(pipewire.threadLoopGetLoop(loop),
                                  PropertiesOf(pipewire, properties), 0);
    if (context == nullptr || pipewire.threadLoopStart(loop) != 0) {
        return false;
    }
    pipewire.threadLoopLock(loop);
    const bool opened = Connect() && AwaitSinks() && OpenStream();
    pipewire.threadLoopUnlock(loop);
    return opened;
}

bool PipeWireOutput::Connection::Connect() {
    core = pipewire.contextConnect(context, nullptr, 0);
    if (core == nullptr) {
        return false;
    }
    const Interface<pw_core_methods> toCore(core);
    toCore.methods.add_listener(toCore.object, &coreHook, &coreEvents, this);
    registry = toCore.methods.get_registry(toCore.object, PW_VERSION_REGISTRY, 0);
    if (registry == nullptr) {
        return false;
    }
    const Interface<pw_registry_methods> toRegistry(registry);
    toRegistry.methods.add_listener(toRegistry.object, &registryHook, &registryEvents, this);
    awaited = toCore.methods.sync(toCore.object, PW_ID_CORE, 0);
    return true;
}

// A daemon may handle screens and cameras only, while another server has the loudspeaker.
bool PipeWireOutput::Connection::AwaitSinks() {
    timespec end = {};
    pipewire.threadLoopGetTime(loop, &end, answerPatienceNs);
    while (!answered && !lost && pipewire.threadLoopTimedWaitFull(loop, &end) == 0) {
    }
    return hasSink && !lost;
}

bool PipeWireOutput::Connection::OpenStream() {
    const std::array<spa_dict_item, 8> properties = {{{PW_KEY_MEDIA_TYPE, "Audio"},
                                                      {PW_KEY_MEDIA_CATEGORY, "Playback"},
                                                      {PW_KEY_MEDIA_ROLE, "Music"},
                                                      {PW_KEY_MEDIA_NAME, "Music"},
                                                      {PW_KEY_APP_NAME, "Skovra"},
                                                      {PW_KEY_NODE_NAME, "Skovra"},
                                                      {PW_KEY_NODE_RATE, "1/44100"},
                                                      {PW_KEY_NODE_LATENCY, latency}}};
    stream = pipewire.streamNew(core, "Music", PropertiesOf(pipewire, properties));
    if (stream == nullptr) {
        return false;
    }
    pipewire.streamAddListener(stream, &streamHook, &streamEvents, this);

    spa_audio_info_raw format = {};
    format.format = SPA_AUDIO_FORMAT_F32;
    format.rate = static_cast<std::uint32_t>(outputRateHz);
    format.channels = 2;
    format.position[0] = SPA_AUDIO_CHANNEL_FL;
    format.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<std::byte, 1024> space;
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, space.data(), static_cast<std::uint32_t>(space.size()));
    std::array<const spa_pod*, 1> parameters = {
        spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    constexpr auto flags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    return pipewire.streamConnect(stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, parameters.data(),
                                  static_cast<std::uint32_t>(parameters.size())) == 0;
}

void PipeWireOutput::Connection::OnDone(void* self, std::uint32_t id, int sequence) {
    auto& connection = *static_cast<Connection*>(self);
    if (id == PW_ID_CORE && sequence == connection.awaited) {
        connection.answered = true;
        connection.pipewire.threadLoopSignal(connection.loop, false);
    }
}

// Errors of objects other than the daemon itself may not concern the stream.
void PipeWireOutput::Connection::OnError(void* self, std::uint32_t id, int, int, const char*) {
    auto& connection = *static_cast<Connection*>(self);
    if (id == PW_ID_CORE) {
        connection.lost = true;
        connection.feed.Fail();
        connection.pipewire.threadLoopSignal(connection.loop, false);
    }
}

void PipeWireOutput::Connection::OnGlobal(void* self, std::uint32_t, std::uint32_t, const char*,
                                          std::uint32_t, const spa_dict* properties) {
    auto& connection = *static_cast<Connection*>(self);
    connection.hasSink = connection.hasSink || IsSink(properties);
}

void PipeWireOutput::Connection::OnState(void* self, pw_stream_state, pw_stream_state now,
                                         const char*) {
    if (now == PW_STREAM_STATE_ERROR || now == PW_STREAM_STATE_UNCONNECTED) {
        static_cast<Connection*>(self)->feed.Fail();
    }
}

// On the library's real-time thread, in each cycle of the graph: gives exactly the frames
// requested, so that none are queued and the stream adds no latency.
void PipeWireOutput::Connection::Process(void* self) {
    auto& connection = *static_cast<Connection*>(self);
    const PipeWireLibrary& pipewire = connection.pipewire;
    pw_buffer* buffer = pipewire.streamDequeueBuffer(connection.stream);
    if (buffer == nullptr) {
        return;
    }
    pw_time time = {};
    pipewire.streamGetTimeN(connection.stream, &time, sizeof(time));
    const PlayReport report = ReportOf(time, connection.written, MonotonicNs());

    const spa_data& data = buffer->buffer->datas[0];
    const std::uint32_t space = data.maxsize / frameBytes;
    const auto frames = static_cast<std::uint32_t>(std::min<std::uint64_t>(
        buffer->requested > 0 ? buffer->requested : space, data.data == nullptr ? 0 : space));
    connection.feed.Render(static_cast<float*>(data.data), static_cast<std::int32_t>(frames),
                           report.playedFrames, report.ns);
    data.chunk->offset = 0;
    data.chunk->stride = static_cast<std::int32_t>(frameBytes);
    data.chunk->size = frames * frameBytes;
    buffer->size = frames;
    connection.written += frames;
    pipewire.streamQueueBuffer(connection.stream, buffer);
}

PipeWireOutput::PipeWireOutput(DeviceFeed& fed) : feed(fed) {}

PipeWireOutput::~PipeWireOutput() = default;

bool PipeWireOutput::Start() {
    const PipeWireLibrary* library = LoadPipeWire();
    if (library == nullptr) {
        return false;
    }
    connection = std::make_unique<Connection>(*library, feed);
    return connection->Open();
}

} // namespace sound
