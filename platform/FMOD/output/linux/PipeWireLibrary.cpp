#include "PipeWireLibrary.h"

#include <cstdlib>
#include <optional>

#include <dlfcn.h>

namespace sound {

template <typename Function>
static bool Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

static bool FindAll(void* from, PipeWireLibrary& to) {
    return Find(from, "pw_init", to.init) &&
           Find(from, "pw_get_library_version", to.getLibraryVersion) &&
           Find(from, "pw_log_set_level", to.logSetLevel) &&
           Find(from, "pw_properties_new_dict", to.propertiesNewDict) &&
           Find(from, "pw_thread_loop_new", to.threadLoopNew) &&
           Find(from, "pw_thread_loop_destroy", to.threadLoopDestroy) &&
           Find(from, "pw_thread_loop_get_loop", to.threadLoopGetLoop) &&
           Find(from, "pw_thread_loop_start", to.threadLoopStart) &&
           Find(from, "pw_thread_loop_stop", to.threadLoopStop) &&
           Find(from, "pw_thread_loop_lock", to.threadLoopLock) &&
           Find(from, "pw_thread_loop_unlock", to.threadLoopUnlock) &&
           Find(from, "pw_thread_loop_signal", to.threadLoopSignal) &&
           Find(from, "pw_thread_loop_get_time", to.threadLoopGetTime) &&
           Find(from, "pw_thread_loop_timed_wait_full", to.threadLoopTimedWaitFull) &&
           Find(from, "pw_context_new", to.contextNew) &&
           Find(from, "pw_context_destroy", to.contextDestroy) &&
           Find(from, "pw_context_connect", to.contextConnect) &&
           Find(from, "pw_core_disconnect", to.coreDisconnect) &&
           Find(from, "pw_proxy_destroy", to.proxyDestroy) &&
           Find(from, "pw_stream_new", to.streamNew) &&
           Find(from, "pw_stream_destroy", to.streamDestroy) &&
           Find(from, "pw_stream_add_listener", to.streamAddListener) &&
           Find(from, "pw_stream_connect", to.streamConnect) &&
           Find(from, "pw_stream_get_time_n", to.streamGetTimeN) &&
           Find(from, "pw_stream_dequeue_buffer", to.streamDequeueBuffer) &&
           Find(from, "pw_stream_queue_buffer", to.streamQueueBuffer);
}

static std::optional<PipeWireLibrary> Load() {
    void* library = dlopen("libpipewire-0.3.so.0", RTLD_NOW | RTLD_LOCAL);
    PipeWireLibrary found = {};
    if (library == nullptr || !FindAll(library, found)) {
        return std::nullopt;
    }
    found.init(nullptr, nullptr);
    // A missing daemon is not an error here, and errors are reported by this program.
    if (std::getenv("PIPEWIRE_DEBUG") == nullptr) {
        found.logSetLevel(SPA_LOG_LEVEL_NONE);
    }
    return found;
}

const PipeWireLibrary* LoadPipeWire() {
    static const std::optional<PipeWireLibrary> library = Load();
    return library ? &*library : nullptr;
}

} // namespace sound
