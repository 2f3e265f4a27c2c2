// The services of the show that its pictures do not need, in place of GLUT, sound and alerts.
#pragma once

#include <array>

namespace gltest {

/// What the music answers until it is changed.
struct Music {
    unsigned int positionMs = 0;
    std::array<float, 512> spectrum = {};
};

extern Music music;

/// How often the show has presented a frame; set to 0 by the test.
extern int presentedFrames;

} // namespace gltest
