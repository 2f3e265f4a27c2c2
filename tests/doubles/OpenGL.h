// A double of OpenGL: records calls, and remembers which capabilities are enabled.
#pragma once

#include <set>

namespace doubles {

struct OpenGLState {
    std::set<unsigned int> enabled; ///< what glIsEnabled answers; glEnable and glDisable change it
};

extern OpenGLState openGL;

} // namespace doubles
