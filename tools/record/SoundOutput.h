// The sound library's output in a recording, in virtual time.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

namespace record {

/// Receives the samples played, in order: left and right interleaved.
using Listener = std::function<void(std::span<const float> samples)>;

/// Passes everything played from now on to @p listener.
void ListenToSound(Listener listener);

/// Plays until @p ms of sound are heard, waiting for the decoder if necessary. Exceptions of the
/// listener pass through.
void PlaySoundUntil(std::int64_t ms);

} // namespace record
