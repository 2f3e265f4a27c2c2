#include "Background.h"

#include <GL/gl.h>

namespace engine {

void DrawBackground(float w, float h, unsigned long tex) {
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(tex));
    glBegin(GL_QUADS);
    glNormal3f(0.0F, 0.0F, 1.0F);
    glTexCoord2f(0.0F, 0.0F);
    glVertex3f(-w, h, 0.0F);
    glTexCoord2f(1.0F, 0.0F);
    glVertex3f(w, h, 0.0F);
    glTexCoord2f(1.0F, 1.0F);
    glVertex3f(w, -h, 0.0F);
    glTexCoord2f(0.0F, 1.0F);
    glVertex3f(-w, -h, 0.0F);
    glEnd();
}

} // namespace engine
