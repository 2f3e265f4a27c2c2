// Makes a test fail if the code under test ends the process.
#pragma once

namespace doubles {

/// While one exists, exit() ends the process with a failure status, whatever its argument.
class ExitGuard {
public:
    ExitGuard();
    ~ExitGuard();

    ExitGuard(const ExitGuard&) = delete;
    ExitGuard& operator=(const ExitGuard&) = delete;

    /// From now on the test expects exit().
    static void Lift();
};

} // namespace doubles
