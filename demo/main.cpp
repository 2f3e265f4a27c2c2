// Program entry: builds the engine, asks the viewer, opens the display, hands over to GLUT.
#include "main.h"

#include "FrameLoop.h"
#include "OpenGLState.h"

#include "AlertBox.h"
#include "DemoEngine.h"
#include "Display.h"
#include "FmodEngine.h"

#include <Carbon/Carbon.h>
#include <GL/glut.h>
#include <objc/message.h>

#include <cstdlib>
#include <iostream>

engine::DemoEngine* demo = nullptr;
static int REF_MS = 25; // defined once, exported by copying
int REF_MS_EXTERN = 0;
int loaded = 0;

namespace {

constexpr unsigned char escapeKey = 27;
constexpr int engineVersion = 6;
constexpr bool soundEnabled = true;

id OpenAutoreleasePool() {
    id poolClass = reinterpret_cast<id>(objc_getClass("NSAutoreleasePool"));
    return objc_msgSend(objc_msgSend(poolClass, sel_registerName("alloc")),
                        sel_registerName("init"));
}

void PrintBanner() {
    std::cout << demo->title;
    std::cout << "\nTarvelund 2006 - Halvmork.\n";
    std::cout << "Using DemoEngine(tm) version: " << engineVersion << "\n";
    std::cout << "Settings:\n Sound : " << soundEnabled << "\n\n";
}

/// The boxes at start; whether the viewer wants the show full screen.
bool AskForFullScreen() {
    // Texts are Mac Roman: 0xA9 is a copyright sign, 0xBF an o with a stroke.
    engine::logMessageBox(demo->title, "Copyright \xA9 2005 Halvmork.");
    const bool fullScreen =
        engine::logQuestionBox(demo->title, "Skal du kj\xBFre Skovra i fullskjerm?");
    engine::logMessageBox(
        demo->title, fullScreen
                         ? "OK, fullskjermspowwah!"
                         : "Oh, oh, oh, getting all high and mighty, WINDOW MODE, yeah whatever.");
    return fullScreen;
}

} // namespace

void Cleanup() {
    ShowCursor();
    std::exit(0);
}

void KeyboardFunc(unsigned char key, int /*x*/, int /*y*/) {
    if (key == escapeKey) {
        Cleanup();
    }
}

int main(int argc, char** argv) {
    id pool = OpenAutoreleasePool();

    demo = new engine::DemoEngine("\"QVZ 02 - Skovra\"");
    PrintBanner();
    auto* music = new engine::FmodEngine("synchtune");
    std::cout << "FMOD - Initiated\n";
    demo->SetFmod(music);

    glutInit(&argc, argv);
    const bool fullScreen = AskForFullScreen();
    engine::BootGLUT(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH, 1024, 768, 200, 200, fullScreen,
                     demo->title);
    InitGL();
    glutDisplayFunc(DrawGLScene);
    glutReshapeFunc(engine::ReSizeGLScene);
    glutKeyboardFunc(KeyboardFunc);
    REF_MS_EXTERN = REF_MS;
    glutTimerFunc(static_cast<unsigned int>(REF_MS), TimerFunc, 1);
    glutMainLoop();

    objc_msgSend(pool, sel_registerName("release"));
    return 0;
}
