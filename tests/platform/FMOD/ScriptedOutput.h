// An output that asks for frames, and has them heard, when the test says so.
#pragma once

#include <cstdint>
#include <vector>

namespace script {

/// No output, nothing heard.
void Reset();

enum class Shortage { Memory, Threads };

/// The next output cannot be started for lack of that.
void RefuseNextStart(Shortage lack);

bool IsStarted();

/// How often something was about to be played.
int DevicesAwaited();

/// Asks for the next @p frames frames, in blocks, and waits for the decoder where need be.
std::vector<float> Pull(int frames);

/// The same without waiting.
std::vector<float> PullAtOnce(int frames);

/// The first @p frames frames ever asked for have been heard by now.
void SetHeard(std::int64_t frames);

/// Everything asked for has been heard by now.
void HearAll();

} // namespace script
