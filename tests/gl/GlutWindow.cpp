// A real GLUT window, for pictures of what is drawn by GLUT's own spheres and letters.
#include "GlutWindow.h"

#include "Texels.h"

#include <GL/glut.h>

#include <cmath>

namespace gltest {

static int Column(double x) {
    return static_cast<int>(std::floor(x)) + windowSide / 2;
}

static int Row(double y) {
    return windowSide / 2 - 1 - static_cast<int>(std::floor(y));
}

GlutWindow::GlutWindow() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glEnable(GL_DEPTH_TEST);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    constexpr double half = windowSide / 2.0;
    glOrtho(-half, half, -half, half, -1000, 1000);
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

GlutWindow::~GlutWindow() {
    glPopAttrib();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

Picture GlutWindow::Drawn() {
    return ReadDrawn(windowSide, windowSide);
}

Rgba At(const Picture& picture, double x, double y) {
    return picture.At(Column(x), Row(y));
}

testing::AssertionResult GlutWindow::IsNear(const Picture& picture, double x, double y,
                                            const Rgba& expected, int reach) {
    for (int up = -reach; up <= reach; ++up) {
        for (int right = -reach; right <= reach; ++right) {
            const Rgba found = At(picture, x + right, y + up);
            if (found.red == expected.red && found.green == expected.green &&
                found.blue == expected.blue) {
                return testing::AssertionSuccess();
            }
        }
    }
    return testing::AssertionFailure() << "no pixel of " << expected << " near " << x << ", " << y;
}

void GlutWindow::BindTexels(const Rgba (&texels)[4]) {
    BindNewTexture(texels);
    glEnable(GL_TEXTURE_2D);
    glColor3f(1, 1, 1);
}

} // namespace gltest

extern "C" int __wrap_main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    glutInit(&argc, argv);
    glutInitDisplayMode(GLUT_RGBA | GLUT_DOUBLE | GLUT_DEPTH);
    glutInitWindowSize(gltest::windowSide, gltest::windowSide);
    glutCreateWindow("Pictures");
    return RUN_ALL_TESTS();
}
