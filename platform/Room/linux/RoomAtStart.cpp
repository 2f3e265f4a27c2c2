// Ends a program that has too little room to run, before a library ends it by a signal.
#include "Room.h"

#include <cerrno>
#include <cstdio>

#include <unistd.h>

namespace {

/// Runs before main, without being called: later other threads would take their share.
[[gnu::constructor]] void EndWithoutRoom() {
    if (const char* missing = MissingFrom(RoomForShow())) {
        std::fprintf(stderr, "%s: cannot run: %s\n", program_invocation_short_name, missing);
        _exit(1);
    }
}

} // namespace
