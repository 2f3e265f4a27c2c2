#include "Vertex.h"

#include <GL/gl.h>

namespace engine {

Vertex::Vertex() : Vertex(0.0F, 0.0F, 0.0F) {}

Vertex::Vertex(float newX, float newY, float newZ) : Vertex(newX, newY, newZ, 0.0F, 0.0F) {
    hasTexCoord = false;
}

Vertex::Vertex(float newX, float newY, float newZ, float newS, float newT)
    : x(newX), y(newY), z(newZ), s(newS), t(newT), r(0.0F), g(0.0F), b(0.0F), hasTexCoord(true),
      hasColour(false) {}

void Vertex::DrawVertex() {
    if (hasColour) {
        glColor3f(r, g, b);
    }
    if (hasTexCoord) {
        glTexCoord2f(s, t);
    }
    glVertex3f(x, y, z);
}

} // namespace engine
