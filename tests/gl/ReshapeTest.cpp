// The reshape callback, asked of a real context.
#include "Display.h"
#include "OffscreenContext.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

namespace {

using Matrix = std::array<double, 16>; // column by column

class RealReshape : public testing::Test {
    OffscreenContext context{16, 16};
};

Matrix ReadMatrix(GLenum which) {
    Matrix matrix = {};
    glGetDoublev(which, matrix.data());
    return matrix;
}

std::array<GLint, 4> Viewport() {
    std::array<GLint, 4> viewport = {};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    return viewport;
}

GLint MatrixMode() {
    GLint mode = 0;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    return mode;
}

void ExpectNear(const Matrix& matrix, const Matrix& expected) {
    for (std::size_t i = 0; i < matrix.size(); ++i) {
        EXPECT_NEAR(matrix[i], expected[i], 1e-6 * std::fmax(1, std::fabs(expected[i])))
            << "element " << i;
    }
}

Matrix Perspective(double aspect) {
    const double f = 1 + std::numbers::sqrt2; // cot(45 / 2 degrees)
    const double near = 1;
    const double far = 2500;
    Matrix matrix = {};
    matrix[0] = f / aspect;
    matrix[5] = f;
    matrix[10] = (far + near) / (near - far);
    matrix[11] = -1;
    matrix[14] = 2 * far * near / (near - far);
    return matrix;
}

} // namespace

TEST_F(RealReshape, SeesFortyFiveDegreesFromOneToTwoThousandFiveHundred) {
    engine::ReSizeGLScene(1024, 768);

    ExpectNear(ReadMatrix(GL_PROJECTION_MATRIX), Perspective(4.0 / 3.0));
}

TEST_F(RealReshape, ReplacesTheProjectionOfTheLastSize) {
    engine::ReSizeGLScene(1024, 768);
    engine::ReSizeGLScene(500, 1000);

    EXPECT_EQ(Viewport(), (std::array<GLint, 4>{0, 0, 500, 1000}));
    ExpectNear(ReadMatrix(GL_PROJECTION_MATRIX), Perspective(0.5));
}

TEST_F(RealReshape, TakesNoHeightForOne) {
    engine::ReSizeGLScene(640, 0);

    EXPECT_EQ(Viewport(), (std::array<GLint, 4>{0, 0, 640, 1}));
    ExpectNear(ReadMatrix(GL_PROJECTION_MATRIX), Perspective(640));
}

TEST_F(RealReshape, LooksFromFiveUnitsInFrontOfTheOrigin) {
    engine::ReSizeGLScene(1024, 768);

    ExpectNear(ReadMatrix(GL_MODELVIEW_MATRIX), {1, 0, 0, 0, //
                                                 0, 1, 0, 0, //
                                                 0, 0, 1, 0, //
                                                 0, 0, -5, 1});
    EXPECT_EQ(MatrixMode(), GL_MODELVIEW);
}

TEST_F(RealReshape, RaisesNoErrorWhateverTheSize) {
    engine::ReSizeGLScene(1, 1);
    engine::ReSizeGLScene(0, 0);
    engine::ReSizeGLScene(4096, 1);

    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}
