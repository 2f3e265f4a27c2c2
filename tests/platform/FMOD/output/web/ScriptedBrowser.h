// The browser's audio, in a time that the test controls.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace browser {

inline constexpr std::int64_t ms = 1'000'000; ///< in ns

/// What a browser says of what is heard.
enum class Stamps { Exact, None, Derived };

/// An audio context that plays in real time while it runs. Its time moves in bursts, as those of
/// browsers do; its sound is heard a while after it was rendered.
struct Context {
    std::int64_t nowNs = 5000 * ms;
    double state = 0.0;
    bool mayOpen = true;    ///< otherwise it cannot be made
    double openState = 1.0; ///< its state then
    std::int64_t burstFrames = 2205;
    std::int64_t latencyFrames = 8820; ///< from rendering to hearing
    Stamps stamps = Stamps::Exact;
    std::int64_t stampErrorNs = 0;
    bool standsStill = false; ///< although it runs
    std::int64_t lossNs = 0;  ///< that pass while a chunk is handed over
    int opened = 0;           ///< how often it was asked for

    /// Lets it run from now on, or interrupts it.
    void Run();
    void Interrupt(double newState);

    /// Lets @p ns pass.
    void Pass(std::int64_t ns);

    /// What is at each frame of the context, as the source numbers it; 0: silence.
    std::vector<std::int64_t> played;

    /// The number of the source's frame that is heard now, or was heard last; 0: none was.
    std::int64_t Heard() const;

    /// The times at which chunks end, in ns; those before now are forgotten.
    std::vector<std::int64_t> ends;

    std::int64_t RenderedFrames() const; ///< up to now, in bursts
    std::int64_t HeardFrames() const;    ///< of the context, by now

    std::int64_t beginNs = 0; ///< when its frame 0 was rendered, without interruptions
    std::int64_t haltedAt = 0;
};

/// The only one; each test begins with a new one.
Context& Current();
void Reset();

} // namespace browser
