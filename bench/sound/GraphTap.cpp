// Listens to what a player hands to PipeWire's graph, and writes it down with the time at which it
// is heard; HeardMusic reads it: graph-tap LOG
//
// A client of its own, linked to the ports of the stream that plays: of the first that appears, and
// of the next when that one is gone, after the daemon has ended, too. A sink's monitor would be
// late by one cycle. The log appears when it is ready for a stream.
#include "SinkLog.h"

#include <pipewire/filter.h>
#include <pipewire/pipewire.h>
#include <spa/param/latency-utils.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using bench::SinkBlock;

static constexpr std::int64_t frameBytes = 2 * sizeof(float);

namespace {

/// Cycles on their way from the graph's thread to the file's.
class Ring {
public:
    Ring() : bytes(capacity) {}

    /// Graph's thread: no lock, no memory, no system call. False: there was no room.
    bool Write(const SinkBlock& block, const float* left, const float* right) {
        const std::uint64_t size = sizeof(block) + static_cast<std::uint64_t>(block.size);
        std::uint64_t at = written.load(std::memory_order_relaxed);
        if (at + size - read.load(std::memory_order_acquire) > capacity) {
            return false;
        }
        Put(at, &block, sizeof(block));
        at += sizeof(block);
        const std::int64_t count = block.size / frameBytes;
        for (std::int64_t i = 0; i < count; ++i) {
            const std::array<float, 2> frame = {left == nullptr ? 0.0F : left[i],
                                                right == nullptr ? 0.0F : right[i]};
            Put(at, frame.data(), sizeof(frame));
            at += sizeof(frame);
        }
        written.store(at, std::memory_order_release);
        return true;
    }

    /// File's thread.
    void MoveTo(std::ofstream& log) {
        const std::uint64_t end = written.load(std::memory_order_acquire);
        std::uint64_t at = read.load(std::memory_order_relaxed);
        while (at < end) {
            const std::uint64_t place = at % capacity;
            const std::uint64_t size = std::min(end - at, capacity - place);
            log.write(bytes.data() + place, static_cast<std::streamsize>(size));
            at += size;
        }
        log.flush();
        read.store(at, std::memory_order_release);
    }

private:
    static constexpr std::uint64_t capacity = std::uint64_t{1} << 23; // 20 s

    // Blocks and frames are multiples of 8 bytes, as the capacity is.
    void Put(std::uint64_t at, const void* data, std::size_t size) {
        const auto* from = static_cast<const char*>(data);
        for (std::size_t i = 0; i < size; i += 8) {
            std::memcpy(bytes.data() + (at + i) % capacity, from + i, 8);
        }
    }

    std::vector<char> bytes;
    std::atomic<std::uint64_t> written{0};
    std::atomic<std::uint64_t> read{0};
};

const char* Property(const spa_dict* properties, const char* name) {
    const char* value = properties == nullptr ? nullptr : spa_dict_lookup(properties, name);
    return value == nullptr ? "" : value;
}

std::uint32_t NumberOf(const char* text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

/// What exists while there is a daemon. All but Process runs on the main thread.
class Connection {
public:
    Connection(pw_context* context, Ring& filled);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    bool IsLost() const { return lost; }
    /// Whether a stream that appears now would be linked at once.
    bool IsReady() const {
        return FindPort(OwnNode(), "FL") != 0 && FindPort(OwnNode(), "FR") != 0;
    }
    bool HasDropped() const { return dropped.load(); }

private:
    struct Port {
        std::uint32_t node;
        std::string channel;
    };
    struct Link {
        pw_proxy* proxy;
        std::uint32_t port; // of the stream
    };

    bool AddFilter();
    std::uint32_t OwnNode() const {
        return filter == nullptr ? SPA_ID_INVALID : pw_filter_get_node_id(filter);
    }
    std::uint32_t FindPort(std::uint32_t node, std::string_view channel) const;
    void LinkStream();
    void LinkChannel(const char* channel);

    static void OnError(void* self, std::uint32_t id, int sequence, int result, const char* text);
    static void OnGlobal(void* self, std::uint32_t id, std::uint32_t permissions, const char* type,
                         std::uint32_t version, const spa_dict* properties);
    static void OnGlobalRemove(void* self, std::uint32_t id);
    static bool Follows(const spa_io_clock& next, const spa_io_clock& before);
    static void Process(void* self, spa_io_position* position);

    Ring& ring;
    pw_core* core = nullptr;
    pw_registry* registry = nullptr;
    pw_filter* filter = nullptr;
    spa_hook coreHook = {};
    spa_hook registryHook = {};
    spa_hook filterHook = {};
    std::array<void*, 2> inputs = {};
    bool lost = false;
    std::vector<std::uint32_t> streams; // in the order in which they came
    std::map<std::uint32_t, Port> ports;
    std::map<std::string, Link> links; // by channel
    spa_io_clock last = {};            // Process only
    bool lastKept = false;             // Process only
    std::atomic<bool> dropped{false};
};

Connection::Connection(pw_context* context, Ring& filled) : ring(filled) {
    static const pw_core_events coreEvents = [] {
        pw_core_events events = {};
        events.version = PW_VERSION_CORE_EVENTS;
        events.error = OnError;
        return events;
    }();
    static const pw_registry_events registryEvents = [] {
        pw_registry_events events = {};
        events.version = PW_VERSION_REGISTRY_EVENTS;
        events.global = OnGlobal;
        events.global_remove = OnGlobalRemove;
        return events;
    }();
    core = pw_context_connect(context, nullptr, 0);
    if (core == nullptr) {
        lost = true;
        return;
    }
    pw_core_add_listener(core, &coreHook, &coreEvents, this);
    registry = pw_core_get_registry(core, PW_VERSION_REGISTRY, 0);
    pw_registry_add_listener(registry, &registryHook, &registryEvents, this);
    lost = !AddFilter();
}

Connection::~Connection() {
    if (core == nullptr) {
        return;
    }
    if (filter != nullptr) {
        pw_filter_destroy(filter);
    }
    for (const auto& [channel, link] : links) {
        pw_proxy_destroy(link.proxy);
    }
    spa_hook_remove(&registryHook);
    pw_proxy_destroy(reinterpret_cast<pw_proxy*>(registry));
    spa_hook_remove(&coreHook);
    pw_core_disconnect(core);
}

bool Connection::AddFilter() {
    static const pw_filter_events filterEvents = [] {
        pw_filter_events events = {};
        events.version = PW_VERSION_FILTER_EVENTS;
        events.process = Process;
        return events;
    }();
    filter = pw_filter_new(core, "bench-graph-tap",
                           pw_properties_new(PW_KEY_NODE_NAME, "bench-graph-tap", nullptr));
    if (filter == nullptr) {
        return false;
    }
    pw_filter_add_listener(filter, &filterHook, &filterEvents, this);
    // Whose latency is neither the least nor the most of those that the stream is told.
    std::array<std::uint8_t, 256> memory;
    spa_pod_builder builder;
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    spa_latency_info none;
    spa_latency_info_combine_start(&none, SPA_DIRECTION_INPUT);
    const spa_pod* latency = spa_latency_build(&builder, SPA_PARAM_Latency, &none);
    const std::array<const char*, 2> channels = {"FL", "FR"};
    for (std::size_t i = 0; i < channels.size(); ++i) {
        inputs[i] = pw_filter_add_port(
            filter, PW_DIRECTION_INPUT, PW_FILTER_PORT_FLAG_MAP_BUFFERS, 1,
            pw_properties_new(PW_KEY_FORMAT_DSP, "32 bit float mono audio", PW_KEY_PORT_NAME,
                              channels[i], PW_KEY_AUDIO_CHANNEL, channels[i], nullptr),
            &latency, 1);
    }
    const auto flags =
        static_cast<pw_filter_flags>(PW_FILTER_FLAG_RT_PROCESS | PW_FILTER_FLAG_CUSTOM_LATENCY);
    return pw_filter_connect(filter, flags, nullptr, 0) == 0;
}

std::uint32_t Connection::FindPort(std::uint32_t node, std::string_view channel) const {
    for (const auto& [id, port] : ports) {
        if (port.node == node && port.channel == channel) {
            return id;
        }
    }
    return 0;
}

void Connection::LinkStream() {
    LinkChannel("FL");
    LinkChannel("FR");
}

// Passive: what is listened to does not keep a stream running that nobody else wants to hear.
void Connection::LinkChannel(const char* channel) {
    const std::uint32_t from = streams.empty() ? 0 : FindPort(streams.front(), channel);
    const std::uint32_t to = FindPort(OwnNode(), channel);
    const auto old = links.find(channel);
    if (old != links.end() && old->second.port != from) {
        pw_proxy_destroy(old->second.proxy);
        links.erase(old);
    }
    if (from == 0 || to == 0 || links.contains(channel)) {
        return;
    }
    pw_properties* properties = pw_properties_new(PW_KEY_LINK_PASSIVE, "true", nullptr);
    pw_properties_setf(properties, PW_KEY_LINK_OUTPUT_NODE, "%u", streams.front());
    pw_properties_setf(properties, PW_KEY_LINK_OUTPUT_PORT, "%u", from);
    pw_properties_setf(properties, PW_KEY_LINK_INPUT_NODE, "%u", OwnNode());
    pw_properties_setf(properties, PW_KEY_LINK_INPUT_PORT, "%u", to);
    void* link = pw_core_create_object(core, "link-factory", PW_TYPE_INTERFACE_Link,
                                       PW_VERSION_LINK, &properties->dict, 0);
    pw_properties_free(properties);
    if (link != nullptr) {
        links[channel] = {static_cast<pw_proxy*>(link), from};
    }
}

void Connection::OnError(void* self, std::uint32_t id, int, int result, const char* text) {
    if (id == PW_ID_CORE && result == -EPIPE) {
        static_cast<Connection*>(self)->lost = true;
    } else {
        std::fprintf(stderr, "graph-tap: %s\n", text);
    }
}

void Connection::OnGlobal(void* self, std::uint32_t id, std::uint32_t, const char* type,
                          std::uint32_t, const spa_dict* properties) {
    auto& tap = *static_cast<Connection*>(self);
    if (std::strcmp(type, PW_TYPE_INTERFACE_Node) == 0 &&
        std::strcmp(Property(properties, PW_KEY_MEDIA_CLASS), "Stream/Output/Audio") == 0) {
        tap.streams.push_back(id);
    }
    if (std::strcmp(type, PW_TYPE_INTERFACE_Port) == 0) {
        const std::uint32_t node = NumberOf(Property(properties, PW_KEY_NODE_ID));
        const bool gives = std::strcmp(Property(properties, PW_KEY_PORT_DIRECTION), "out") == 0;
        if (gives != (node == tap.OwnNode())) {
            tap.ports[id] = {node, Property(properties, PW_KEY_AUDIO_CHANNEL)};
        }
    }
    tap.LinkStream();
}

void Connection::OnGlobalRemove(void* self, std::uint32_t id) {
    auto& tap = *static_cast<Connection*>(self);
    std::erase(tap.streams, id);
    tap.ports.erase(id);
    tap.LinkStream();
}

// Whether no cycle was between the two. A driver may be late; one that was idle for a while counts
// on from where it was.
bool Connection::Follows(const spa_io_clock& next, const spa_io_clock& before) {
    constexpr std::int64_t lateNs = 10'000'000;
    const auto duration = static_cast<std::int64_t>(before.duration);
    const std::int64_t dueNs =
        static_cast<std::int64_t>(before.nsec) + duration * 1'000'000'000 / before.rate.denom;
    return next.id == before.id && next.rate.denom == before.rate.denom &&
           next.position == before.position + before.duration &&
           static_cast<std::int64_t>(next.nsec) < dueNs + lateNs;
}

// Real-time, see Ring::Write. A cycle's time is that of the driver; what it reports beyond that, it
// reports as a delay.
void Connection::Process(void* self, spa_io_position* position) {
    auto& tap = *static_cast<Connection*>(self);
    const spa_io_clock& clock = position->clock;
    const auto count = static_cast<std::uint32_t>(clock.duration);
    const auto* left = static_cast<const float*>(pw_filter_get_dsp_buffer(tap.inputs[0], count));
    const auto* right = static_cast<const float*>(pw_filter_get_dsp_buffer(tap.inputs[1], count));
    const std::int64_t rateHz = clock.rate.denom;
    const bool follows = tap.lastKept && Follows(clock, tap.last);
    const std::int64_t delayNs = std::abs(clock.delay) * 1'000'000'000 / rateHz;
    const SinkBlock block = {static_cast<std::int64_t>(clock.nsec) + delayNs, rateHz,
                             follows ? 1 : 0, count * frameBytes};
    tap.lastKept = tap.ring.Write(block, left, right);
    tap.last = clock;
    if (!tap.lastKept) {
        tap.dropped.store(true);
    }
}

class Tap {
public:
    explicit Tap(const char* path) : logPath(path), loop(pw_main_loop_new(nullptr)) {
        const std::string_view version = pw_get_library_version();
        // The one whose threads are given real-time priority.
        const char* configuration =
            version.starts_with("0.") || version.starts_with("1.0") || version.starts_with("1.2")
                ? "client-rt.conf"
                : "client.conf";
        context = pw_context_new(pw_main_loop_get_loop(loop),
                                 pw_properties_new(PW_KEY_CONFIG_NAME, configuration, nullptr), 0);
    }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    ~Tap() {
        connection.reset();
        pw_context_destroy(context);
        pw_main_loop_destroy(loop);
    }

    // Until it is asked to end.
    void Run() {
        pw_loop* const events = pw_main_loop_get_loop(loop);
        pw_loop_add_signal(events, SIGTERM, End, this);
        pw_loop_add_signal(events, SIGINT, End, this);
        timespec soon = {0, 1};
        timespec period = {0, 20'000'000};
        pw_loop_update_timer(events, pw_loop_add_timer(events, Tick, this), &soon, &period, false);
        pw_main_loop_run(loop);
        ring.MoveTo(log);
    }

private:
    static void End(void* self, int) { pw_main_loop_quit(static_cast<Tap*>(self)->loop); }

    static void Tick(void* self, std::uint64_t) {
        auto& tap = *static_cast<Tap*>(self);
        if (tap.connection == nullptr || tap.connection->IsLost()) {
            tap.connection.reset();
            tap.connection = std::make_unique<Connection>(tap.context, tap.ring);
        }
        if (!tap.log.is_open() && tap.connection->IsReady()) {
            tap.log.open(tap.logPath, std::ios::binary);
        }
        if (tap.log.is_open()) {
            tap.ring.MoveTo(tap.log);
        }
        if (tap.connection->HasDropped()) {
            std::fputs("graph-tap: the log could not keep up\n", stderr);
            std::exit(1);
        }
    }

    const char* logPath;
    pw_main_loop* loop;
    pw_context* context = nullptr;
    Ring ring;
    std::ofstream log;
    std::unique_ptr<Connection> connection;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: graph-tap LOG\n", stderr);
        return 2;
    }
    pw_init(&argc, &argv);
    Tap(argv[1]).Run();
    return 0;
}
