// An output that requests frames and reports them as heard when the test says so.
#pragma once

#include <cstdint>
#include <vector>

namespace script {

/// No output, nothing heard.
void Reset();

enum class Shortage { Memory, Threads };

/// Starting the next output fails for lack of that.
void RefuseNextStart(Shortage lack);

bool IsStarted();

/// The number of calls of AwaitDevice.
int DevicesAwaited();

/// Requests the next @p frames frames, in blocks, waiting for the decoder if necessary.
std::vector<float> Pull(int frames);

/// The same without waiting.
std::vector<float> PullAtOnce(int frames);

/// The first @p frames frames ever requested have been heard by now.
void SetHeard(std::int64_t frames);

/// All frames requested have been heard by now.
void HearAll();

} // namespace script
