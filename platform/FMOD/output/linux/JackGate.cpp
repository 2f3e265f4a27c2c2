#include "JackGate.h"

#include <cstdarg>

#include <dlfcn.h>

namespace sound {

static thread_local bool isClosed = false;

JackGate::JackGate() noexcept {
    isClosed = true;
}

JackGate::~JackGate() {
    isClosed = false;
}

} // namespace sound

/// Takes the place of JACK's own, as the dynamic linker searches the program before its libraries.
extern "C" void* jack_client_open(const char* name, int options, int* status, ...) {
    constexpr int namesServer = 4; // JackServerName: the server's name follows
    using Open = void* (*)(const char*, int, int*, ...);
    static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "jack_client_open"));
    if (sound::isClosed || open == nullptr) {
        return nullptr;
    }
    const char* server = nullptr;
    if ((options & namesServer) != 0) {
        va_list arguments;
        va_start(arguments, status);
        server = va_arg(arguments, const char*);
        va_end(arguments);
    }
    return open(name, options, status, server);
}
