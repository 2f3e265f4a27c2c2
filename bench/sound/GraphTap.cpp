// Listens to what a player hands to PipeWire's graph, and writes it down with the time at which it
// is heard; GroundTruth reads it: graph-tap LOG
//
// A sink's monitor would be late by one cycle. The log appears when it is ready for a stream.
#include "CycleRing.h"
#include "PipeWireLibrary.h"
#include "TapConnection.h"

#include <pipewire/pipewire.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>

using bench::CycleRing;
using bench::TapConnection;

namespace {

class Tap {
public:
    explicit Tap(const char* path) : logPath(path), loop(pw_main_loop_new(nullptr)) {
        const char* configuration = sound::RealTimeConfiguration(pw_get_library_version());
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
            tap.connection = std::make_unique<TapConnection>(tap.context, tap.ring);
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
    CycleRing ring;
    std::ofstream log;
    std::unique_ptr<TapConnection> connection;
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
