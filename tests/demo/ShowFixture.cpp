#include "ShowFixture.h"

#include "FrameLoop.h"
#include "Loader.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "Display.h"
#include "FmodEngine.h"

#include "DemoParts.h"
#include "Effects.h"
#include "Glut.h"

ShowFixture::ShowFixture() {
    doubles::NameCallback(DrawGLScene, "DrawGLScene");
    doubles::NameCallback(KeyboardFunc, "KeyboardFunc");
    doubles::NameCallback(TimerFunc, "TimerFunc");
    doubles::NameCallback(engine::ReSizeGLScene, "engine::ReSizeGLScene");
}

ShowFixture::~ShowFixture() {
    if (demo != nullptr) {
        doubles::DeleteParts(*demo);
        delete demo->fmod;
        delete demo;
    }
    delete kasse;

    demo = nullptr;
    REF_MS_EXTERN = 0;
    loaded = 0;
    rotate = 0.0F;
    globalAngle = 0.0F;
    kasse = nullptr;
}

void ShowFixture::MakeDemo() {
    doubles::EffectsOf([] {
        demo = new engine::DemoEngine("\"Title\"");
        demo->SetFmod(new engine::FmodEngine("synchtune"));
    });
}

void ShowFixture::Load() {
    doubles::EffectsOf([] { Loader(); });
}
