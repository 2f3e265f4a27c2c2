// Frees what a demo leaves to the end of the process, for tests that make many.
#pragma once

#include "DemoEngine.h"
#include "LightEngine.h"
#include "TextureManager.h"
#include "TimeEngine.h"

namespace doubles {

/// Deletes what @p demo has made, but not its music, which it does not own.
inline void DeleteParts(const engine::DemoEngine& demo) {
    delete demo.placeholderA;
    delete demo.placeholderB;
    delete demo.textures;
    delete demo.light;
    delete[] demo.clearColour;
    delete demo.time;
}

} // namespace doubles
