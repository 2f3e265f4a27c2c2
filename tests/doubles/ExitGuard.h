// Keeps a test whose code under test ends the process half-way from passing.
#pragma once

namespace doubles {

/// While one lives, exit() gives the process a status of failure, whatever status was asked for.
class ExitGuard {
public:
    ExitGuard();
    ~ExitGuard();

    ExitGuard(const ExitGuard&) = delete;
    ExitGuard& operator=(const ExitGuard&) = delete;

    /// From now on exit() is what is asked for.
    static void Lift();
};

} // namespace doubles
