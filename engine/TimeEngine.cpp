#include "TimeEngine.h"

#include "FmodEngine.h"

namespace engine {

TimeEngine::TimeEngine(FmodEngine* musicEngine) {
    ClearAll();
    fmod = musicEngine;
}

void TimeEngine::ClearAll() {
    fmod = nullptr;
    curTime = 0;
    deltaTime = 0;
    prevTime = 0;
}

void TimeEngine::Update() {
    prevTime = curTime;
    const std::uint32_t position = fmod->GetCurTime();
    curTime = static_cast<std::int32_t>(position);
    deltaTime = static_cast<std::int32_t>(position - static_cast<std::uint32_t>(prevTime));
}

} // namespace engine
