// What a larger project includes and calls of the engine.
#include <skovra/AlertBox.h>
#include <skovra/BaseEngine.h>
#include <skovra/DemoEngine.h>
#include <skovra/Display.h>
#include <skovra/FmodEngine.h>
#include <skovra/Text.h>
#include <skovra/TextureManager.h>

#include <CoreFoundation/CoreFoundation.h>
#include <FMOD/FMOD.h>
#include <GL/glpng.h>

// Such names are also those of other projects' headers.
#if defined(OTHER_PROJECT) && (__has_include(<Box.h>) || __has_include(<Text.h>))
#error "The engine's headers are not in a folder of their own."
#endif

bool AskAndOpen();

bool AskAndOpen() {
    const bool fullScreen = engine::logQuestionBox("Consumer", "Full screen?");
    engine::BootGLUT(0, 640, 480, 0, 0, fullScreen, "Consumer");
    auto* demo = new engine::DemoEngine("Consumer");
    demo->SetFmod(new engine::FmodEngine("music"));
    demo->textures->LoadTexture("picture", "png", "picture");
    return engine::BaseEngine().GetFileFromBundle("picture", "png").empty();
}
