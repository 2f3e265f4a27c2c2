// The sound library's output in a recording: it plays as far as it is told to.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

namespace record {

/// Gets what is played, in order: left and right in turn.
using Listener = std::function<void(std::span<const float> samples)>;

/// What is played from now on goes to @p listener.
void ListenToSound(Listener listener);

/// Plays on until @p ms of sound are heard, and waits for the decoder where need be. The listener's
/// exceptions pass through.
void PlaySoundUntil(std::int64_t ms);

} // namespace record
