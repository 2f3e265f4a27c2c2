// Records a stream of PipeWire's graph while there is a daemon.
#pragma once

#include "CycleRing.h"

#include <pipewire/filter.h>
#include <pipewire/pipewire.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// A client of the daemon that is linked to the ports of the stream that plays: of the first that
/// appears, and of the next when that one is gone. It ends with the daemon. All but Process runs on
/// the main thread.
class TapConnection {
public:
    TapConnection(pw_context* context, CycleRing& filled);
    TapConnection(const TapConnection&) = delete;
    TapConnection& operator=(const TapConnection&) = delete;
    ~TapConnection();

    /// Whether the daemon is gone, or was never there.
    bool IsLost() const { return lost; }
    /// Whether a stream that appears now would be linked at once.
    bool IsReady() const {
        return FindPort(OwnNode(), "FL") != 0 && FindPort(OwnNode(), "FR") != 0;
    }
    /// Whether the ring was ever full.
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

    CycleRing& ring;
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

} // namespace bench
