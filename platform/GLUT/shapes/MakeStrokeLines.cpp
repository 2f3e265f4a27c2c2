// Writes StrokeLines.cpp: what the installed GLUT calls OpenGL for when it draws a letter. A
// program of the building system, which needs no display: it stands in for OpenGL.
#include <GL/gl.h>
#include <GL/glut.h>

#include <cstddef>
#include <cstdio>
#include <vector>

namespace {

struct Point {
    float x, y;
};

struct Line {
    std::size_t firstPoint, pointCount;
};

struct Character {
    std::size_t firstLine, lineCount;
    float advance;
    bool exists;
};

std::vector<Point> points;
std::vector<Line> lines;
std::vector<Character> characters;
bool onlyLines = true;

} // namespace

extern "C" {

// Of freeglut itself: it would end the program because there is no display.
void IgnoreError(const char*, ...) __asm__("fgError");

void IgnoreError(const char*, ...) {}

void glBegin(GLenum mode) {
    onlyLines = onlyLines && mode == GL_LINE_STRIP;
    lines.push_back({points.size(), 0});
}

void glVertex2f(GLfloat x, GLfloat y) {
    points.push_back({x, y});
}

void glEnd() {
    lines.back().pointCount = points.size() - lines.back().firstPoint;
}

void glTranslatef(GLfloat x, GLfloat, GLfloat) {
    characters.back().advance = x;
    characters.back().exists = true;
}

} // extern "C"

static void Write() {
    std::puts("#include \"StrokeLines.h\"\n\n#include <cstddef>\n\nnamespace glut {\n\n"
              "static constexpr StrokePoint points[] = {");
    for (const Point& point : points) {
        std::printf("    {%aF, %aF},\n", static_cast<double>(point.x),
                    static_cast<double>(point.y));
    }
    std::puts("};\n\nstatic constexpr struct {\n    std::size_t firstPoint, pointCount;\n"
              "} lines[] = {");
    for (const Line& line : lines) {
        std::printf("    {%zu, %zu},\n", line.firstPoint, line.pointCount);
    }
    std::puts("};\n\nstatic constexpr StrokeCharacter characters[] = {");
    for (const Character& character : characters) {
        std::printf("    {%zu, %zu, %aF, %s},\n", character.firstLine, character.lineCount,
                    static_cast<double>(character.advance), character.exists ? "true" : "false");
    }
    std::puts("};\n\nconst std::span<const StrokeCharacter> strokeCharacters = characters;\n\n"
              "std::span<const StrokePoint> StrokeLine(int number) {\n"
              "    const auto& line = lines[number];\n"
              "    return {points + line.firstPoint, line.pointCount};\n"
              "}\n\n} // namespace glut");
}

int main() {
    for (int code = 0; code < 256; ++code) {
        characters.push_back({lines.size(), 0, 0, false});
        glutStrokeCharacter(GLUT_STROKE_ROMAN, code);
        characters.back().lineCount = lines.size() - characters.back().firstLine;
    }
    if (points.empty() || !onlyLines) {
        std::fputs("GLUT has drawn no letters of line strips\n", stderr);
        return 1;
    }
    Write();
    return 0;
}
