// PipeWire's client library, loaded on demand: systems without it use other devices.
#pragma once

#include <pipewire/pipewire.h>

#include <cstdio>

namespace sound {

/// Functions of libpipewire: pw_thread_loop_new is threadLoopNew here, and so on.
struct PipeWireLibrary {
    decltype(&pw_init) init;
    decltype(&pw_get_library_version) getLibraryVersion;
    decltype(&pw_log_set_level) logSetLevel;
    decltype(&pw_properties_new_dict) propertiesNewDict;
    decltype(&pw_thread_loop_new) threadLoopNew;
    decltype(&pw_thread_loop_destroy) threadLoopDestroy;
    decltype(&pw_thread_loop_get_loop) threadLoopGetLoop;
    decltype(&pw_thread_loop_start) threadLoopStart;
    decltype(&pw_thread_loop_stop) threadLoopStop;
    decltype(&pw_thread_loop_lock) threadLoopLock;
    decltype(&pw_thread_loop_unlock) threadLoopUnlock;
    decltype(&pw_thread_loop_signal) threadLoopSignal;
    decltype(&pw_thread_loop_get_time) threadLoopGetTime;
    decltype(&pw_thread_loop_timed_wait_full) threadLoopTimedWaitFull;
    decltype(&pw_context_new) contextNew;
    decltype(&pw_context_destroy) contextDestroy;
    decltype(&pw_context_connect) contextConnect;
    decltype(&pw_core_disconnect) coreDisconnect;
    decltype(&pw_proxy_destroy) proxyDestroy;
    decltype(&pw_stream_new) streamNew;
    decltype(&pw_stream_destroy) streamDestroy;
    decltype(&pw_stream_add_listener) streamAddListener;
    decltype(&pw_stream_connect) streamConnect;
    decltype(&pw_stream_get_time_n) streamGetTimeN;
    decltype(&pw_stream_dequeue_buffer) streamDequeueBuffer;
    decltype(&pw_stream_queue_buffer) streamQueueBuffer;
};

/// The library, initialised, and with its log off unless PIPEWIRE_DEBUG is set; null: not installed
/// or too old. It stays loaded. One thread at a time.
const PipeWireLibrary* LoadPipeWire();

/// The configuration file with which the library gives its threads real-time priority; @p version
/// as getLibraryVersion returns it. From 1.3 on that is the default one.
inline const char* RealTimeConfiguration(const char* version) noexcept {
    int major = 0;
    int minor = 0;
    std::sscanf(version, "%d.%d", &major, &minor);
    return major < 1 || (major == 1 && minor < 3) ? "client-rt.conf" : "client.conf";
}

} // namespace sound
