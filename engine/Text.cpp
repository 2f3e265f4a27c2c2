#include "Text.h"

#include <GL/gl.h>
#include <GL/glut.h>

namespace engine {

void OutputText(float x, float y, char* text) {
    glPushMatrix();
    glTranslatef(x, y, 0.0F);
    for (const char* character = text; *character != '\0'; ++character) {
        // Signed also where char is not: bytes above 127 are negative codes.
        glutStrokeCharacter(GLUT_STROKE_ROMAN, static_cast<signed char>(*character));
    }
    glPopMatrix();
    glTranslatef(-x, -y, 0.0F); // after the pop on purpose: it stays
}

} // namespace engine
