#include "ExitGuard.h"

#include <cstdio>
#include <cstdlib>

namespace doubles {

namespace {

bool guarded = false;

void FailIfGuarded() {
    if (guarded) {
        std::fputs("The code under test ended the process.\n", stderr);
        std::_Exit(EXIT_FAILURE);
    }
}

} // namespace

ExitGuard::ExitGuard() {
    [[maybe_unused]] static const int registered = std::atexit(FailIfGuarded);
    guarded = true;
}

ExitGuard::~ExitGuard() {
    guarded = false;
}

void ExitGuard::Lift() {
    guarded = false;
}

} // namespace doubles
