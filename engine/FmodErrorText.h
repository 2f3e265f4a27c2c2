// What the sound library's result codes mean, in words.
#pragma once

#include <FMOD/FMOD.h>

namespace engine {

/// The text for @p result, each with a blank at its end but for "Unknown error.", which stands for
/// every code outside 0..68. Static storage.
const char* FmodErrorText(FMOD_RESULT result);

} // namespace engine
