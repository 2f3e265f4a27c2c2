// Messages for the sound library's result codes.
#pragma once

#include <FMOD/FMOD.h>

namespace engine {

/// The message for @p result. Each ends in a space except "Unknown error.", which is the message
/// for every code outside 0..68. Static storage.
const char* FmodErrorText(FMOD_RESULT result);

} // namespace engine
