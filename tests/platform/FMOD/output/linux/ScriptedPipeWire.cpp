// PipeWire's library by a script.
#include "ScriptedPipeWire.h"

#include "PipeWireLibrary.h"

#include <spa/param/audio/format-utils.h>

#include <cerrno>
#include <cstddef>

using devices::Properties;
using devices::script;

devices::ScriptedPipeWire devices::script;

namespace {

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
