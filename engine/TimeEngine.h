// The demo's clock: the music position at the latest frame and the step since the one before.
#pragma once

#include <cstdint>

namespace engine {

class FmodEngine;

/// Has no time source but the music. Main thread only.
class TimeEngine {
public:
    /// @p musicEngine: not owned.
    explicit TimeEngine(FmodEngine* musicEngine);

    /// Zeroes every field, the music engine included: Update needs it set again.
    void ClearAll();

    /// One tick. Ends the process with status 255 when FmodEngine::GetCurTime is refused, as it
    /// is before FmodEngine::Play.
    void Update();

    FmodEngine* fmod;
    std::int32_t curTime;   ///< ms
    std::int32_t deltaTime; ///< ms; negative when the position went back
    std::int32_t prevTime;  ///< ms
};

} // namespace engine
