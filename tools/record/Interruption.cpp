#include "Interruption.h"

#include <csignal>
#include <stdexcept>

namespace record {

namespace {

volatile std::sig_atomic_t noted = 0; // the signal, or 0

void Note(int signal) {
    noted = signal;
}

} // namespace

void NoteInterruptions() {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action = {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) { // as under nohup
            action = {};
            action.sa_handler = Note; // without SA_RESTART: blocking calls return
            sigaction(signal, &action, nullptr);
        }
    }
}

void ThrowIfInterrupted() {
    if (noted != 0) {
        throw std::runtime_error("interrupted");
    }
}

void EndIfInterrupted() {
    if (noted != 0) {
        std::signal(noted, SIG_DFL);
        std::raise(noted);
    }
}

} // namespace record
