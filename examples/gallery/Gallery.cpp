// Every drawing primitive of the engine in one window.
//
// Keys 1 to 8 choose what is shown (3 again: another number of electrons), the arrow keys turn it,
// Escape quits.
#include "Atom.h"
#include "Background.h"
#include "Box.h"
#include "DemoEngine.h"
#include "Display.h"
#include "LightEngine.h"
#include "Text.h"
#include "TextureManager.h"
#include "Vector.h"
#include "Vertex.h"

#include <GL/glut.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string>

namespace {

engine::DemoEngine* demo = nullptr; // made in main, lives as long as the process
engine::Box* box = nullptr;
unsigned long ringElectrons = 1;
float turnX = 20.0F; // degrees
float turnY = -30.0F;

void DrawBoxes() {
    demo->textures->GetTexture("texture");
    glPushMatrix();
    glTranslatef(-200.0F, 0.0F, 0.0F);
    box->DrawSizedBox(120.0F, 120.0F, 120.0F, demo->textures->textures["texture"]);
    glPopMatrix();
    glPushMatrix();
    glTranslatef(200.0F, 0.0F, 0.0F);
    glDisable(GL_TEXTURE_2D); // without a texture a box shows the bare colours of its faces
    box->DrawSizedBox(120.0F, 120.0F, 120.0F, 0);
    glPopMatrix();
}

void DrawAtom() {
    engine::Atom atom = {};
    atom.electrons = 5;
    atom.angle = 60.0F;
    atom.distance = 180.0F;
    atom.radius = 30.0F;
    glEnable(GL_LIGHTING);
    atom.Draw();
    glDisable(GL_LIGHTING);
}

void DrawAtomRing() {
    glEnable(GL_LIGHTING);
    engine::Atoms(0.0F, 0.0F, 0.0F, ringElectrons, 90.0F);
    glDisable(GL_LIGHTING);
}

void DrawBackdrop() {
    glEnable(GL_TEXTURE_2D);
    glColor3f(1.0F, 1.0F, 1.0F);
    engine::DrawBackground(400.0F, 231.0F,
                           static_cast<unsigned long>(demo->textures->textures["skovr"]));
    glDisable(GL_TEXTURE_2D);
}

void DrawVertices() {
    glBegin(GL_TRIANGLE_STRIP);
    for (int i = 0; i < 12; ++i) {
        const auto along = static_cast<float>(i);
        engine::Vertex vertex(along * 60.0F - 330.0F, i % 2 == 0 ? -100.0F : 100.0F,
                              60.0F * std::sin(along));
        vertex.r = along / 11.0F;
        vertex.g = 0.4F;
        vertex.b = 1.0F - along / 11.0F;
        vertex.hasColour = true;
        vertex.DrawVertex();
    }
    glEnd();
}

void DrawStrokeText() {
    glColor3f(1.0F, 0.8F, 0.4F);
    std::string text = "Skovra";
    glScalef(1.8F, 1.8F, 1.0F); // the font's capitals are 100 units high
    engine::OutputText(-200.0F, -50.0F, text.data());
}

void DrawSphereMap() {
    glEnable(GL_TEXTURE_2D);
    glColor3f(1.0F, 1.0F, 1.0F);
    demo->textures->GetTexture("skovr");
    glMatrixMode(GL_TEXTURE);
    glScalef(1.0F, -1.0F, 1.0F); // a picture's first row is its top, a reflection's its bottom
    glMatrixMode(GL_MODELVIEW);
    demo->EnableSEM();
    glutSolidSphere(250.0, 60, 60);
    demo->DisableSEM();
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glDisable(GL_TEXTURE_2D);
}

void DrawVectors() {
    Vector x(1, 0, 0, 0);
    Vector y(0, 1, 0, 0);
    Vector sum = x + y;
    Vector direction = sum.GetNormalized();
    glColor3f(1.0F, 0.3F, 0.3F);
    x.Draw(280.0);
    glColor3f(0.3F, 1.0F, 0.3F);
    y.Draw(280.0);
    glColor3f(1.0F, 1.0F, 1.0F);
    direction.Draw(280.0);
}

struct Exhibit {
    const char* name;
    void (*draw)();
};

constexpr Exhibit exhibits[] = {
    {"1  Box: textured, and in its colours", DrawBoxes},
    {"2  Atom::Draw", DrawAtom},
    {"3  Atoms, electrons: ", DrawAtomRing},
    {"4  DrawBackground", DrawBackdrop},
    {"5  Vertex, in a strip", DrawVertices},
    {"6  OutputText", DrawStrokeText},
    {"7  Sphere map: EnableSEM, DisableSEM", DrawSphereMap},
    {"8  Vector::Draw: x, y, their sum at length 1", DrawVectors},
};

const Exhibit* exhibit = &exhibits[0];

void DrawCaption() {
    std::string caption = exhibit->name;
    if (exhibit->draw == DrawAtomRing) {
        caption += std::to_string(ringElectrons);
    }
    glPushMatrix(); // OutputText moves the matrix, on purpose
    glTranslatef(-480.0F, -360.0F, 0.0F);
    glScalef(0.25F, 0.25F, 1.0F);
    glColor3f(1.0F, 1.0F, 1.0F);
    engine::OutputText(0.0F, 0.0F, caption.data());
    glPopMatrix();
}

void DrawFrame() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0.0F, 0.0F, -1000.0F);
    DrawCaption();
    glRotatef(turnX, 1.0F, 0.0F, 0.0F);
    glRotatef(turnY, 0.0F, 1.0F, 0.0F);
    exhibit->draw();
    glutSwapBuffers();
}

void PressKey(unsigned char key, int /*x*/, int /*y*/) {
    if (key == 27) {
        std::exit(0);
    }
    const int chosen = key - '1';
    if (chosen < 0 || chosen >= static_cast<int>(std::size(exhibits))) {
        return;
    }
    if (key == '3' && exhibit->draw == DrawAtomRing) {
        ringElectrons = ringElectrons == 1 ? 7 : ringElectrons == 7 ? 12 : 1;
    }
    exhibit = &exhibits[chosen];
    glutPostRedisplay();
}

void PressArrow(int key, int /*x*/, int /*y*/) {
    turnX += key == GLUT_KEY_UP ? -5.0F : key == GLUT_KEY_DOWN ? 5.0F : 0.0F;
    turnY += key == GLUT_KEY_LEFT ? -5.0F : key == GLUT_KEY_RIGHT ? 5.0F : 0.0F;
    glutPostRedisplay();
}

} // namespace

int main(int argc, char** argv) {
    glutInit(&argc, argv);
    engine::BootGLUT(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH, 1024, 768, 100, 100, false,
                     "Skovra gallery");

    // The engine object owns textures and light. A demo with music gives it that by SetFmod and
    // calls Refresh in every frame; this one has no music and needs neither.
    demo = new engine::DemoEngine("Skovra gallery");
    demo->textures->LoadTexture("texture", "png", "texture");
    demo->textures->LoadTexture("skovr", "png", "skovr");
    demo->light->ActivateLight();
    glEnable(GL_DEPTH_TEST);
    glLineWidth(2.0F);

    box = new engine::Box;
    const float colours[6][3] = {{0.9F, 0.5F, 0.3F}, {1.0F, 1.0F, 1.0F}, {0.4F, 0.3F, 0.7F},
                                 {1.0F, 0.8F, 0.5F}, {0.3F, 0.5F, 0.8F}, {0.7F, 0.8F, 1.0F}};
    std::copy(&colours[0][0], &colours[0][0] + 18, &box->colour[0][0]);

    glutDisplayFunc(DrawFrame);
    glutReshapeFunc(engine::ReSizeGLScene);
    glutKeyboardFunc(PressKey);
    glutSpecialFunc(PressArrow);
    glutMainLoop();
    return 0;
}
