// The full-screen policy between a scripted screen and a recorded freeglut, both defined here.
#include "ScreenProbe.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include <GL/glx.h> // last: its macros would take GoogleTest's names

extern "C" {
void __wrap_glutFullScreen();
int __wrap_glutEnterGameMode();
}

namespace {

using Calls = std::vector<std::string>;

Calls calls;

struct Script {
    bool gameModeChangesNothing = true;
    int screenWidth = 1280;
    int screenHeight = 1024;
    bool gameModeWorks = true;
    int gameModeWidth = 1280;
    int gameModeHeight = 1024;
    int currentWindow = 0;
} script;

std::string Text(int number) {
    return std::to_string(number);
}

} // namespace

ScreenProbe::ScreenProbe() = default;

void ScreenProbe::Closer::operator()(Display*) const {}

int ScreenProbe::Width() const {
    return script.screenWidth;
}

int ScreenProbe::Height() const {
    return script.screenHeight;
}

bool ScreenProbe::GameModeChangesNothing() const {
    return script.gameModeChangesNothing;
}

ScreenProbe::Position ScreenProbe::Pointer() const {
    return {300, 200};
}

extern "C" {

void __real_glutFullScreen() {
    calls.emplace_back("glutFullScreen");
}

int __real_glutEnterGameMode() {
    calls.emplace_back("glutEnterGameMode");
    script.currentWindow = script.gameModeWorks ? 7 : 0;
    return script.currentWindow;
}

void glutLeaveGameMode() {
    calls.emplace_back("glutLeaveGameMode");
    script.currentWindow = 0;
}

int glutGameModeGet(GLenum what) {
    switch (what) {
    case GLUT_GAME_MODE_ACTIVE:
        return script.currentWindow == 7 ? 1 : 0;
    case GLUT_GAME_MODE_WIDTH:
        return script.gameModeWidth;
    case GLUT_GAME_MODE_HEIGHT:
        return script.gameModeHeight;
    default:
        return -1;
    }
}

int glutGetWindow() {
    return script.currentWindow;
}

int glutGet(GLenum what) {
    switch (what) {
    case GLUT_SCREEN_WIDTH:
        return 800;
    case GLUT_SCREEN_HEIGHT:
        return 600;
    case GLUT_INIT_DISPLAY_MODE:
        return GLUT_DOUBLE | GLUT_DEPTH;
    default:
        return -1;
    }
}

void glutInitDisplayMode(unsigned int mode) {
    const auto rest = mode & ~static_cast<unsigned int>(GLUT_BORDERLESS);
    EXPECT_EQ(rest, static_cast<unsigned int>(GLUT_DOUBLE | GLUT_DEPTH));
    calls.emplace_back(rest == mode ? "with frames" : "without frames");
}

void glutInitWindowSize(int width, int height) {
    calls.push_back("glutInitWindowSize " + Text(width) + " " + Text(height));
}

void glutInitWindowPosition(int x, int y) {
    calls.push_back("glutInitWindowPosition " + Text(x) + " " + Text(y));
}

int glutCreateWindow(const char* title) {
    calls.push_back(std::string("glutCreateWindow ") + title);
    script.currentWindow = 1;
    return 1;
}

Display* glXGetCurrentDisplay() {
    return nullptr;
}

GLXDrawable glXGetCurrentDrawable() {
    return 99;
}

Window XDefaultRootWindow(Display*) {
    return 11;
}

int XWarpPointer(Display*, Window source, Window destination, int, int, unsigned int, unsigned int,
                 int x, int y) {
    EXPECT_EQ(source, 0U);
    EXPECT_EQ(destination, 11U);
    calls.push_back("XWarpPointer " + Text(x) + " " + Text(y));
    return 1;
}

int XSetInputFocus(Display*, Window focus, int revertTo, Time) {
    EXPECT_EQ(focus, 99U);
    calls.emplace_back(revertTo == RevertToPointerRoot ? "XSetInputFocus RevertToPointerRoot"
                                                       : "XSetInputFocus");
    return 1;
}

int XFlush(Display*) {
    calls.emplace_back("XFlush");
    return 1;
}
}

namespace {

class FullScreen : public testing::Test {
protected:
    FullScreen() {
        calls.clear();
        script = {};
    }
};

const Calls fullScreenWindow{"glutInitWindowSize 1280 1024",
                             "glutInitWindowPosition 0 0",
                             "without frames",
                             "glutCreateWindow Skovra",
                             "with frames",
                             "glutFullScreen"};

Calls After(Calls first, const Calls& rest) {
    first.insert(first.end(), rest.begin(), rest.end());
    return first;
}

TEST_F(FullScreen, IsNotAskedOfFreeglutWithoutAWindow) {
    __wrap_glutFullScreen();
    EXPECT_EQ(calls, Calls{});
}

TEST_F(FullScreen, IsAskedOfFreeglutForAWindow) {
    script.currentWindow = 1;
    __wrap_glutFullScreen();
    EXPECT_EQ(calls, Calls{"glutFullScreen"});
}

TEST_F(FullScreen, IsGameModeThatPutsPointerAndFocusRight) {
    EXPECT_EQ(__wrap_glutEnterGameMode(), 7);
    EXPECT_EQ(calls, (Calls{"glutEnterGameMode", "XWarpPointer 300 200",
                            "XSetInputFocus RevertToPointerRoot", "XFlush"}));
    EXPECT_EQ(glutGetWindow(), 7);
}

TEST_F(FullScreen, IsAWindowWhereGameModeWouldChangeSomething) {
    script.gameModeChangesNothing = false;
    EXPECT_EQ(__wrap_glutEnterGameMode(), 1);
    EXPECT_EQ(calls, fullScreenWindow);
}

TEST_F(FullScreen, IsAWindowWhereGameModeFails) {
    script.gameModeWorks = false;
    EXPECT_EQ(__wrap_glutEnterGameMode(), 1);
    EXPECT_EQ(calls, After({"glutEnterGameMode"}, fullScreenWindow));
}

TEST_F(FullScreen, IsAWindowWhereGameModeHasAnotherSize) {
    for (const auto& [width, height] : {std::pair{1024, 1024}, {1280, 768}}) {
        calls.clear();
        script = {.gameModeWidth = width, .gameModeHeight = height};
        EXPECT_EQ(__wrap_glutEnterGameMode(), 1);
        EXPECT_EQ(calls, After({"glutEnterGameMode", "glutLeaveGameMode"}, fullScreenWindow));
    }
}

TEST_F(FullScreen, TakesFreeglutsSizeWhereTheScreenDoesNotAnswer) {
    script.gameModeChangesNothing = false;
    script.screenWidth = 0;
    script.screenHeight = 0;
    __wrap_glutEnterGameMode();
    EXPECT_EQ(calls,
              (Calls{"glutInitWindowSize 800 600", "glutInitWindowPosition 0 0", "without frames",
                     "glutCreateWindow Skovra", "with frames", "glutFullScreen"}));
}

} // namespace
