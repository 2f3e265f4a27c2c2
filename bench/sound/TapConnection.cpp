#include "TapConnection.h"

#include <spa/param/latency-utils.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench {

static constexpr std::int64_t frameBytes = 2 * sizeof(float);

static const char* Property(const spa_dict* properties, const char* name) {
    const char* value = properties == nullptr ? nullptr : spa_dict_lookup(properties, name);
    return value == nullptr ? "" : value;
}

static std::uint32_t NumberOf(const char* text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

TapConnection::TapConnection(pw_context* context, CycleRing& filled) : ring(filled) {
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

TapConnection::~TapConnection() {
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

bool TapConnection::AddFilter() {
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

std::uint32_t TapConnection::FindPort(std::uint32_t node, std::string_view channel) const {
    for (const auto& [id, port] : ports) {
        if (port.node == node && port.channel == channel) {
            return id;
        }
    }
    return 0;
}

void TapConnection::LinkStream() {
    LinkChannel("FL");
    LinkChannel("FR");
}

// Passive: what is listened to does not keep a stream running that nobody else wants to hear.
void TapConnection::LinkChannel(const char* channel) {
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

void TapConnection::OnError(void* self, std::uint32_t id, int, int result, const char* text) {
    if (id == PW_ID_CORE && result == -EPIPE) {
        static_cast<TapConnection*>(self)->lost = true;
    } else {
        std::fprintf(stderr, "graph-tap: %s\n", text);
    }
}

void TapConnection::OnGlobal(void* self, std::uint32_t id, std::uint32_t, const char* type,
                             std::uint32_t, const spa_dict* properties) {
    auto& tap = *static_cast<TapConnection*>(self);
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

void TapConnection::OnGlobalRemove(void* self, std::uint32_t id) {
    auto& tap = *static_cast<TapConnection*>(self);
    std::erase(tap.streams, id);
    tap.ports.erase(id);
    tap.LinkStream();
}

// Whether no cycle was between the two. A driver may be late; one that was idle for a while counts
// on from where it was.
bool TapConnection::Follows(const spa_io_clock& next, const spa_io_clock& before) {
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
void TapConnection::Process(void* self, spa_io_position* position) {
    auto& tap = *static_cast<TapConnection*>(self);
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

} // namespace bench
