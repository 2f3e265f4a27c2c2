#include "Atom.h"

#include <GL/gl.h>
#include <GL/glut.h>

namespace engine {

namespace {

void DrawAtom(float x, float y, float z, unsigned long electrons, float distance, float radius,
              float angle) {
    glPushMatrix();
    glTranslatef(x, y, z);
    glColor3f(1.0F, 0.0F, 0.0F);
    glutSolidSphere(40.0, 30, 40);
    if (electrons != 0) {
        const unsigned long wholeDegrees = 360 / electrons; // rounded down on purpose
        const auto step = static_cast<float>(wholeDegrees);
        for (unsigned long i = 0; i < electrons; ++i) {
            glRotatef(step, 0.0F, 0.0F, 1.0F);
            Electron(distance, radius, angle);
        }
    }
    glPopMatrix();
}

} // namespace

void Atom::Draw() {
    DrawAtom(x, y, z, electrons, distance, radius, angle);
}

void Atom::DrawElectron(float d, float r, float a) {
    Electron(d, r, a);
}

void Electron(float distance, float radius, float angle) {
    glPushMatrix();
    glPushMatrix();
    glColor3f(0.0F, 0.0F, 1.0F);
    glRotatef(angle, 0.0F, 1.0F, 0.0F);
    glBegin(GL_LINES);
    glVertex3f(0.0F, 0.0F, 0.0F);
    glVertex3f(0.0F, 0.0F, (distance - radius) + 1.0F); // ends inside the sphere
    glEnd();
    glPopMatrix();
    glRotatef(angle, 0.0F, 1.0F, 0.0F);
    glTranslatef(0.0F, 0.0F, distance);
    glColor3ub(100, 100, 0);
    glutSolidSphere(radius, 15, 20);
    glPopMatrix();
}

void Atoms(float x, float y, float z, unsigned long electrons, float angle) {
    DrawAtom(x, y, z, electrons, 200.0F, 20.0F, angle);
}

} // namespace engine
