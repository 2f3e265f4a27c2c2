// Maps output time to music time, which pauses and underruns separate.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace sound {

/// Maps frames of the output's timeline to frames of the music.
/// Mark: one thread at a time, real-time. At: any thread. Neither blocks.
class MusicTime {
public:
    enum class State : int { Running, Halted, Ended, Broken };

    static constexpr bool IsOver(State state) {
        return state == State::Ended || state == State::Broken;
    }

    struct Moment {
        std::int64_t musicFrame;
        State state;
    };

    /// From output frame @p outputFrame (never before the latest mark) on, the music plays from, or
    /// is halted at, @p musicFrame.
    void Mark(std::int64_t outputFrame, std::int64_t musicFrame, State state) noexcept;

    /// The music heard with @p outputFrame; halted at 0 before the first mark.
    Moment At(std::int64_t outputFrame) const noexcept;

private:
    struct Entry {
        std::atomic<std::int64_t> outputFrame{0};
        std::atomic<std::int64_t> musicFrame{0};
        std::atomic<State> state{State::Halted};
    };
    // More than the changes, at most two a block, in frames that are handed out but not heard yet.
    static constexpr std::uint32_t capacity = 256;

    std::array<Entry, capacity> entries;
    // Marks before `finished` are written; those before `begun` minus the capacity are gone.
    std::atomic<std::uint32_t> begun{0};
    std::atomic<std::uint32_t> finished{0};
};

} // namespace sound
