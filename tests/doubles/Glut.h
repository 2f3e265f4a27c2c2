// GLUT without a window: keeps the callbacks for a test to call.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace doubles {

struct GlutScript {
    /// What happens in the main loop, which then returns, as no real one does.
    std::function<void()> mainLoop = [] {};

    /// What else happens when a timer is armed.
    std::function<void()> timerArmed = [] {};

    void (*display)() = nullptr;
    void (*reshape)(int width, int height) = nullptr;
    void (*keyboard)(unsigned char key, int x, int y) = nullptr;
    void (*timer)(int value) = nullptr; ///< armed last
    int timerValue = 0;

    int presentedFrames = 0;

    std::map<void (*)(), std::string> names; ///< how callbacks are written, see NameCallback
};

extern GlutScript glut;

/// Has @p callback written as @p name wherever it is registered.
template <typename Function>
void NameCallback(Function* callback, const std::string& name) {
    glut.names[reinterpret_cast<void (*)()>(callback)] = name;
}

} // namespace doubles
