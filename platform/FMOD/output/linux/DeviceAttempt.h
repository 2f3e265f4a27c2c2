// One attempt to open a device and to play on it, which may hang.
#pragma once

#include "OutputTimeline.h"

#include <atomic>
#include <memory>

namespace sound {

class Device;
struct DeviceKind;
struct LiveOutput;

/// Calls the device on a thread of its own. Nobody waits for that thread without a limit: it owns
/// all that it uses, and may outlive the output.
class DeviceAttempt {
public:
    enum class Stage { Opening, Open, Closing, Over };

    /// Starts the thread, which inherits the caller's priority; null: too little memory or too few
    /// threads. Each new stage wakes @p output. @p kind must live as long as the process.
    static std::shared_ptr<DeviceAttempt> Begin(const std::shared_ptr<LiveOutput>& output,
                                                const DeviceKind& kind) noexcept;

    /// For std::atexit: a process that exits unloads its libraries while these threads are still
    /// running. They get a moment to return from them, and do not enter them again.
    static void KeepOutOfLibraries() noexcept;

    DeviceAttempt(std::shared_ptr<LiveOutput> of, const DeviceKind& tried);
    DeviceAttempt(const DeviceAttempt&) = delete;
    DeviceAttempt& operator=(const DeviceAttempt&) = delete;

    /// Any thread:
    Stage Reached() const noexcept { return stage; }
    bool WasAsked() const noexcept { return feed.WasAsked(); }
    bool HasPlayed() const noexcept { return feed.HasPlayed(); }

    /// Any thread: the device is closed as soon as the call that it is in returns.
    void GiveUp() noexcept;

private:
    void Run() noexcept;
    bool Open(std::unique_ptr<Device>& device);
    void Reach(Stage reached) noexcept;

    const std::shared_ptr<LiveOutput> output;
    const DeviceKind& kind;
    DeviceFeed feed;
    std::atomic<Stage> stage{Stage::Opening};
};

} // namespace sound
