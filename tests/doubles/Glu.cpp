// GLU, recorded.
#include "Effects.h"

#include <GL/glu.h>

using doubles::Record;

void gluPerspective(GLdouble fovy, GLdouble aspect, GLdouble zNear, GLdouble zFar) {
    Record("gluPerspective", fovy, aspect, zNear, zFar);
}

void gluLookAt(GLdouble eyeX, GLdouble eyeY, GLdouble eyeZ, GLdouble centerX, GLdouble centerY,
               GLdouble centerZ, GLdouble upX, GLdouble upY, GLdouble upZ) {
    Record("gluLookAt", eyeX, eyeY, eyeZ, centerX, centerY, centerZ, upX, upY, upZ);
}
