// The demo's clock: the playback position at the latest frame and the step since the previous one.
#pragma once

#include <cstdint>

namespace engine {

class FmodEngine;

/// The music is its only time source. Main thread only.
class TimeEngine {
public:
    /// @p musicEngine: not owned.
    explicit TimeEngine(FmodEngine* musicEngine);

    /// Zeroes every field, the music engine included: Update needs it set again.
    void ClearAll();

    /// Reads the playback position. Ends the process with status 255 if that is refused, as it is
    /// before FmodEngine::Play.
    void Update();

    FmodEngine* fmod;
    std::int32_t curTime;   ///< ms
    std::int32_t deltaTime; ///< ms; negative when the position went back
    std::int32_t prevTime;  ///< ms
};

} // namespace engine
