// A double of GLUT without a window; keeps the callbacks for tests to call.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace doubles {

struct GlutScript {
    /// Runs as the main loop, which then returns, unlike the real one.
    std::function<void()> mainLoop = [] {};

    /// Also runs when a timer is armed.
    std::function<void()> timerArmed = [] {};

    void (*display)() = nullptr;
    void (*reshape)(int width, int height) = nullptr;
    void (*keyboard)(unsigned char key, int x, int y) = nullptr;
    void (*timer)(int value) = nullptr; ///< armed last
    int timerValue = 0;

    int presentedFrames = 0;

    std::map<void (*)(), std::string> names; ///< of callbacks, see NameCallback
};

extern GlutScript glut;

/// Makes @p callback appear as @p name wherever it is registered.
template <typename Function>
void NameCallback(Function* callback, const std::string& name) {
    glut.names[reinterpret_cast<void (*)()>(callback)] = name;
}

} // namespace doubles
