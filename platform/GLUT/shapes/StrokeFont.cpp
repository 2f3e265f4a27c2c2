// GLUT's letters of lines.
#include "StrokeLines.h"

#include <GL/gl.h>
#include <GL/glut.h>

#include <cstddef>

// GLUT_STROKE_ROMAN is its address.
void* glutStrokeRoman = nullptr;

static void DrawLine(std::span<const glut::StrokePoint> points) {
    glBegin(GL_LINE_STRIP);
    for (const glut::StrokePoint& point : points) {
        glVertex3f(point.x, point.y, 0);
    }
    glEnd();
}

void glutStrokeCharacter(void* font, int code) {
    const auto index = static_cast<std::size_t>(code);
    if (font != GLUT_STROKE_ROMAN || code < 0 || index >= glut::strokeCharacters.size()) {
        return;
    }
    const glut::StrokeCharacter& character = glut::strokeCharacters[index];
    if (!character.exists) {
        return;
    }
    for (int line = 0; line < character.lineCount; ++line) {
        DrawLine(glut::StrokeLine(character.firstLine + line));
    }
    glTranslatef(character.advance, 0, 0);
}
