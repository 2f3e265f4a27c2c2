// A sink for PipeWire that says that it plays late, as those do that send the sound elsewhere:
//   late-sink MS...
// It is named late-sink, plays nothing, and reports the first latency; after each SIGUSR1 the next.
#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>
#include <spa/param/latency-utils.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

class LateSink {
public:
    explicit LateSink(std::vector<std::int64_t> latenciesMs)
        : reported(std::move(latenciesMs)), loop(pw_main_loop_new(nullptr)) {
        pw_loop* const events = pw_main_loop_get_loop(loop);
        pw_loop_add_signal(events, SIGTERM, End, this);
        pw_loop_add_signal(events, SIGUSR1, Next, this);
        stream = pw_stream_new_simple(events, "late-sink",
                                      pw_properties_new(PW_KEY_NODE_NAME, "late-sink",
                                                        PW_KEY_MEDIA_CLASS, "Audio/Sink",
                                                        PW_KEY_PRIORITY_SESSION, "1000", nullptr),
                                      &Events(), this);
    }
    LateSink(const LateSink&) = delete;
    LateSink& operator=(const LateSink&) = delete;
    ~LateSink() {
        if (stream != nullptr) {
            pw_stream_destroy(stream);
        }
        pw_main_loop_destroy(loop);
    }

    // Until it is asked to end.
    bool Run() {
        std::array<std::uint8_t, 1024> memory;
        spa_pod_builder builder;
        spa_pod_builder_init(&builder, memory.data(), memory.size());
        spa_audio_info_raw format = {};
        format.format = SPA_AUDIO_FORMAT_F32;
        format.channels = 2;
        format.position[0] = SPA_AUDIO_CHANNEL_FL;
        format.position[1] = SPA_AUDIO_CHANNEL_FR;
        const spa_pod* param = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format);
        if (stream == nullptr ||
            pw_stream_connect(stream, PW_DIRECTION_INPUT, PW_ID_ANY,
                              static_cast<pw_stream_flags>(PW_STREAM_FLAG_MAP_BUFFERS |
                                                           PW_STREAM_FLAG_RT_PROCESS),
                              &param, 1) != 0) {
            return false;
        }
        pw_main_loop_run(loop);
        return true;
    }

private:
    static const pw_stream_events& Events() {
        static const pw_stream_events streamEvents = [] {
            pw_stream_events events = {};
            events.version = PW_VERSION_STREAM_EVENTS;
            events.param_changed = OnParam;
            events.process = Process;
            return events;
        }();
        return streamEvents;
    }

    void Report() {
        std::array<std::uint8_t, 256> memory;
        spa_pod_builder builder;
        spa_pod_builder_init(&builder, memory.data(), memory.size());
        spa_latency_info info = {};
        info.direction = SPA_DIRECTION_INPUT;
        info.min_ns = static_cast<decltype(info.min_ns)>(reported[current] * 1'000'000);
        info.max_ns = info.min_ns;
        const spa_pod* latency = spa_latency_build(&builder, SPA_PARAM_Latency, &info);
        pw_stream_update_params(stream, &latency, 1);
    }

    // Once there is something to be late with: 1.4 forgets what was reported before.
    static void OnParam(void* self, std::uint32_t id, const spa_pod* param) {
        if (id == SPA_PARAM_Format && param != nullptr) {
            static_cast<LateSink*>(self)->Report();
        }
    }

    static void End(void* self, int) { pw_main_loop_quit(static_cast<LateSink*>(self)->loop); }

    static void Next(void* self, int) {
        auto& sink = *static_cast<LateSink*>(self);
        sink.current = std::min(sink.current + 1, sink.reported.size() - 1);
        sink.Report();
    }

    static void Process(void* self) {
        auto& sink = *static_cast<LateSink*>(self);
        while (pw_buffer* buffer = pw_stream_dequeue_buffer(sink.stream)) {
            pw_stream_queue_buffer(sink.stream, buffer);
        }
    }

    std::vector<std::int64_t> reported;
    std::size_t current = 0;
    pw_main_loop* loop;
    pw_stream* stream;
};

} // namespace

int main(int argc, char** argv) {
    std::vector<std::int64_t> latenciesMs;
    for (int i = 1; i < argc; ++i) {
        latenciesMs.push_back(std::strtol(argv[i], nullptr, 10));
    }
    if (latenciesMs.empty()) {
        std::fputs("usage: late-sink MS...\n", stderr);
        return 2;
    }
    pw_init(&argc, &argv);
    return LateSink(std::move(latenciesMs)).Run() ? 0 : 1;
}
