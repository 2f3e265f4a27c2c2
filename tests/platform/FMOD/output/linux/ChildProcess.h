// A child process of a test.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <sys/types.h>

/// Ends with this object, and with the test's process, however that ends.
class ChildProcess {
public:
    ChildProcess() = default;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Starts @p command with standard output to @p outputPath. One at a time.
    void Start(const std::vector<std::string>& command,
               const std::string& outputPath = "/dev/null");

    /// Runs @p command to its end: what waitpid says.
    static int Run(const std::vector<std::string>& command);

    bool IsRunning();

    void Signal(int signal) const;

    /// Sends @p signal and waits until the process has ended.
    void End(int signal);

    /// Waits until it has ended; returns the status from waitpid.
    int Wait();

    /// Waits until @p reached(). Fails the test and returns false if the program ends before, or
    /// after 60 s.
    template <typename Condition>
    bool Await(Condition reached) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!reached()) {
            if (!IsRunning()) {
                ADD_FAILURE() << program << " is not installed, or ended too soon";
                return false;
            }
            if (std::chrono::steady_clock::now() > end) {
                ADD_FAILURE() << program << " has not done what is awaited of it";
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

private:
    std::string program;
    pid_t child = -1;
};
