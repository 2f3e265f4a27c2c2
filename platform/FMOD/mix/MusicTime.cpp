#include "MusicTime.h"

#include <algorithm>

namespace sound {

void MusicTime::Mark(std::int64_t outputFrame, std::int64_t musicFrame, State state) noexcept {
    const std::uint32_t number = finished.load(std::memory_order_relaxed);
    begun.store(number + 1, std::memory_order_relaxed);
    Entry& entry = entries[number % capacity];
    entry.outputFrame.store(outputFrame, std::memory_order_release);
    entry.musicFrame.store(musicFrame, std::memory_order_release);
    entry.state.store(state, std::memory_order_release);
    finished.store(number + 1, std::memory_order_release);
}

MusicTime::Moment MusicTime::At(std::int64_t outputFrame) const noexcept {
    Moment moment = {0, State::Halted};
    bool known = false;
    std::uint32_t number = finished.load(std::memory_order_acquire);
    while (number > 0) {
        const Entry& entry = entries[(number - 1) % capacity];
        const std::int64_t from = entry.outputFrame.load(std::memory_order_acquire);
        const Moment start = {entry.musicFrame.load(std::memory_order_acquire),
                              entry.state.load(std::memory_order_acquire)};
        const bool overwritten = begun.load(std::memory_order_relaxed) > number - 1 + capacity;
        if (overwritten && known) {
            return moment; // the oldest mark still kept
        }
        if (overwritten) {
            number = finished.load(std::memory_order_acquire); // even the latest is gone: retry
            continue;
        }
        moment = start;
        known = true;
        if (from <= outputFrame) {
            moment.musicFrame += start.state == State::Running ? outputFrame - from : 0;
            return moment;
        }
        --number;
    }
    return {moment.musicFrame, State::Halted}; // before the first mark
}

} // namespace sound
