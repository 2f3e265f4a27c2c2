// The examples of docs/engine.md, each between the marks of its name, and a program that runs one:
// "engine-examples NAME" shows it in a window until Escape.
#include "AlertBox.h"
#include "Atom.h"
#include "Background.h"
#include "Box.h"
#include "DemoEngine.h"
#include "Display.h"
#include "FmodEngine.h"
#include "LightEngine.h"
#include "Scalar.h"
#include "Text.h"
#include "TextureManager.h"
#include "TimeEngine.h"
#include "Trigonometry.h"
#include "Vector.h"
#include "Vertex.h"

#include <GL/glut.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

namespace {

engine::DemoEngine* demo = nullptr;

void BaseEngineExample() {
    // [BaseEngine]
    engine::BaseEngine files;
    std::string path = files.GetFileFromBundle("texture", "png");
    std::string name = path.substr(path.rfind('/') + 1); // empty if there is no such file
    engine::OutputText(-360.0F, -40.0F, name.data());
    // [/BaseEngine]
}

void DemoEngineExample() {
    // [DemoEngine]
    glLoadIdentity();
    demo->cameraZ = -900.0F; // the scene stands this far in front of the eye
    demo->Refresh();         // goes there, reads the spectrum, ticks the clock
    demo->textures->GetTexture("skovr");
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glMatrixMode(GL_TEXTURE);
    glPushMatrix();
    glScalef(1.0F, -1.0F, 1.0F); // a picture begins at its top, a mirror at its bottom
    glMatrixMode(GL_MODELVIEW);
    demo->EnableSEM(); // what is drawn from here on mirrors the texture
    glutSolidSphere(250.0, 60, 60);
    demo->DisableSEM();
    glMatrixMode(GL_TEXTURE);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    // [/DemoEngine]
}

void FmodEngineExample() {
    // [FmodEngine]
    demo->fmod->UpdateSpectrum(); // what is heard at this moment
    for (int band = 0; band < 80; ++band) {
        const float level = demo->fmod->GetAverage(band, band + 1);
        const auto left = static_cast<float>(band) * 10.0F - 400.0F;
        glRectf(left, -250.0F, left + 8.0F, level * 3000.0F - 250.0F);
    }
    // [/FmodEngine]
}

void TimeEngineExample() {
    // [TimeEngine]
    demo->time->Update(); // DemoEngine::Refresh does this in every frame
    const auto positionMs = static_cast<float>(demo->time->curTime);
    glRotatef(positionMs * -0.09F, 0.0F, 0.0F, 1.0F); // once round in 4 s of music
    glRectf(-6.0F, 0.0F, 6.0F, 280.0F);
    // [/TimeEngine]
}

void LightEngineExample() {
    // [LightEngine]
    demo->light->ambient[0] = 0.8F; // the light's own colour, and that of the shadows
    demo->light->ambient[2] = 0.3F;
    glPushMatrix();
    glLoadIdentity(); // the light hangs a little above the eye
    demo->light->ActivateLight();
    glPopMatrix();
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    glutSolidTeapot(220.0);
    glDisable(GL_LIGHTING);
    // [/LightEngine]
}

void TextureManagerExample() {
    // [TextureManager]
    if (demo->textures->textures.count("tile") == 0) {
        demo->textures->LoadTexture("texture", "png", "tile"); // texture.png, from now on "tile"
    }
    demo->textures->GetTexture("tile");
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glutSolidTeapot(220.0);
    // [/TextureManager]
}

void BoxExample() {
    // [Box]
    engine::Box box;
    box.width = 150.0F; // half-extents
    box.height = 100.0F;
    box.depth = 150.0F;
    box.colour[5][0] = 0.9F; // row 5: the bottom, and the side towards the viewer
    box.colour[3][1] = 0.6F; // row 3: the top
    box.colour[4][2] = 0.7F; // row 4: the right side
    glRotatef(25.0F, 1.0F, 0.0F, 0.0F);
    glRotatef(-30.0F, 0.0F, 1.0F, 0.0F);
    glEnable(GL_DEPTH_TEST); // without it the face drawn last is in front
    box.DrawBox();
    // [/Box]
}

void AtomExample() {
    // [Atom]
    engine::Atom carbon = {};
    carbon.electrons = 6;
    carbon.angle = 70.0F; // how far the ring opens towards the viewer
    carbon.distance = 180.0F;
    carbon.radius = 30.0F;
    carbon.x = -200.0F;
    glEnable(GL_DEPTH_TEST);
    carbon.Draw();
    engine::Atoms(210.0F, 0.0F, 0.0F, 1, 90.0F); // hydrogen, in one call
    // [/Atom]
}

void BackgroundExample() {
    // [Background]
    demo->textures->GetTexture("skovr");
    glEnable(GL_TEXTURE_2D);
    const int picture = demo->textures->textures["skovr"];
    engine::DrawBackground(450.0F, 260.0F, static_cast<unsigned long>(picture));
    // [/Background]
}

void VertexExample() {
    // [Vertex]
    engine::Vertex corners[] = {{-250.0F, -200.0F, 0.0F}, {250.0F, -200.0F, 0.0F}, {0, 250.0F, 0}};
    corners[0].r = corners[1].g = corners[2].b = 1.0F;
    glBegin(GL_TRIANGLES);
    for (engine::Vertex& corner : corners) {
        corner.hasColour = true;
        corner.DrawVertex();
    }
    glEnd();
    // [/Vertex]
}

void TextExample() {
    // [Text]
    std::string greeting = "Hello";
    glPushMatrix(); // every call leaves the matrix moved by (-x, -y)
    engine::OutputText(-170.0F, 20.0F, greeting.data());
    glPopMatrix();
    glScalef(0.5F, 0.5F, 1.0F); // capitals are 100 units high
    engine::OutputText(-170.0F, -180.0F, greeting.data());
    // [/Text]
}

void VectorExample() {
    // [Vector]
    Vector up(0, 250, 0, 0);
    Vector right(350, 0, 0, 0);
    Vector sum = up + right;
    Vector direction = sum.GetNormalized();
    up.Draw(1.0);
    right.Draw(1.0);
    direction.Draw(Vector::GetAngle(up, sum) * 300.0);
    // [/Vector]
}

void ScalarExample() {
    // [Scalar]
    glBegin(GL_LINE_LOOP);
    for (int corner = 0; corner < 5; ++corner) {
        const double angle = DegToRad(corner * 144.0 + 90.0); // every second of five: a star
        glVertex3d(std::cos(angle) * 250.0, std::sin(angle) * 250.0, 0.0);
    }
    glEnd();
    // [/Scalar]
}

void TrigonometryExample() {
    // [Trigonometry]
    engine::GenerateSinTable();
    glBegin(GL_LINE_STRIP);
    for (int i = 0; i < 360; ++i) { // entry i is for i radians, not degrees
        glVertex2f(engine::cosinusTable[i] * 300.0F, engine::sinusTable[i] * 250.0F);
    }
    glEnd();
    // [/Trigonometry]
}

void DisplayExample(int argc, char** argv) {
    // [Display]
    glutInit(&argc, argv);
    const int mode = GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH;
    engine::BootGLUT(mode, 640, 480, 100, 100, false, "My demo"); // true: full screen
    glutReshapeFunc(engine::ReSizeGLScene);
    // [/Display]
}

void AlertBoxExample() {
    // [AlertBox]
    engine::logMessageBox("My demo", "Made with the engine.");
    const bool fullScreen = engine::logQuestionBox("My demo", "Shall it fill the screen?");
    // [/AlertBox]
    std::puts(fullScreen ? "full screen" : "window");
}

struct Example {
    const char* name;
    void (*draw)();
};

constexpr Example examples[] = {
    {"Atom", AtomExample},
    {"Background", BackgroundExample},
    {"BaseEngine", BaseEngineExample},
    {"Box", BoxExample},
    {"DemoEngine", DemoEngineExample},
    {"Display", BoxExample},
    {"FmodEngine", FmodEngineExample},
    {"LightEngine", LightEngineExample},
    {"Scalar", ScalarExample},
    {"Text", TextExample},
    {"TextureManager", TextureManagerExample},
    {"TimeEngine", TimeEngineExample},
    {"Trigonometry", TrigonometryExample},
    {"Vector", VectorExample},
    {"Vertex", VertexExample},
};

const Example* shown = nullptr;

void DrawExample() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    glTranslatef(0.0F, 0.0F, -900.0F);
    glDisable(GL_TEXTURE_2D);
    glColor3f(1.0F, 1.0F, 1.0F);
    shown->draw();
    glutSwapBuffers();
}

void DrawOften(int value) {
    glutPostRedisplay();
    glutTimerFunc(25, DrawOften, value);
}

void LeaveOnEscape(unsigned char key, int /*x*/, int /*y*/) {
    if (key == 27) {
        std::exit(0);
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::string name = argc > 1 ? argv[1] : "";
    for (const Example& example : examples) {
        if (name == example.name) {
            shown = &example;
        }
    }
    if (name == "AlertBox") {
        AlertBoxExample();
        return 0;
    }
    if (shown == nullptr) {
        std::fputs("usage: engine-examples NAME, a section of docs/engine.md\n", stderr);
        return 2;
    }
    DisplayExample(argc, argv);
    demo = new engine::DemoEngine("My demo"); // as all that an engine holds: for good
    demo->SetFmod(new engine::FmodEngine("synchtune"));
    demo->textures->LoadTexture("skovr", "png", "skovr");
    demo->fmod->Play();
    glLineWidth(2.0F);
    glutDisplayFunc(DrawExample);
    glutKeyboardFunc(LeaveOnEscape);
    glutTimerFunc(25, DrawOften, 0);
    glutMainLoop();
    return 0;
}
