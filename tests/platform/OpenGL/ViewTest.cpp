// gluPerspective, gluLookAt and the matrix calls, as GLU and the system's OpenGL have them.
#include "Both.h"

#include "OffscreenContext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <random>

namespace {

class View : public testing::Test {
protected:
    double Between(double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(random);
    }

    static void Compare(const opengl::Matrix& matrix) {
        opengl::Matrix expected;
        glGetFloatv(GL_MODELVIEW_MATRIX, expected.values.data());
        for (std::size_t i = 0; i < expected.values.size(); ++i) {
            const float bound = 2e-6F * std::max(1.0F, std::abs(expected.values[i]));
            ASSERT_NEAR(matrix.values[i], expected.values[i], bound) << "element " << i;
        }
    }

    OffscreenContext context{16, 16};
    std::minstd_rand random{7};
};

} // namespace

TEST_F(View, IsAPerspective) {
    for (int i = 0; i < 100; ++i) {
        const double angle = Between(5, 170);
        const double aspect = Between(0.2, 5);
        const double near = Between(0.1, 10);
        const double far = Between(11, 3000);
        glLoadIdentity();
        gluPerspective(angle, aspect, near, far);
        Compare(opengl::Perspective(angle, aspect, near, far));
    }
}

TEST_F(View, IsNotChangedByAPerspectiveOfNothing) {
    for (const auto& [angle, aspect, far] :
         {std::array{0.0, 1.0, 9.0}, {45.0, 0.0, 9.0}, {45.0, 1.0, 1.0}}) {
        glLoadIdentity();
        gluPerspective(angle, aspect, 1, far);
        Compare(opengl::Perspective(angle, aspect, 1, far));
    }
}

TEST_F(View, LooksAt) {
    for (int i = 0; i < 100; ++i) {
        const std::array eye = {Between(-9, 9), Between(-9, 9), Between(-9, 9)};
        const std::array center = {Between(-9, 9), Between(-9, 9), Between(-9, 9)};
        const std::array up = {Between(-1, 1), Between(-1, 1), Between(-1, 1)};
        glLoadIdentity();
        gluLookAt(eye[0], eye[1], eye[2], center[0], center[1], center[2], up[0], up[1], up[2]);
        Compare(opengl::View(eye, center, up));
    }
}

TEST_F(View, Turns) {
    for (int i = 0; i < 100; ++i) {
        const auto degrees = static_cast<float>(Between(-720, 720));
        const auto x = static_cast<float>(Between(-1, 1));
        const auto y = i % 3 == 0 ? 0.0F : static_cast<float>(Between(-1, 1));
        const auto z = i % 2 == 0 ? 0.0F : static_cast<float>(Between(-1, 1));
        glLoadIdentity();
        glRotatef(degrees, x, y, z);
        Compare(opengl::Rotation(degrees, x, y, z));
    }
}

TEST_F(View, DoesNotTurnAboutNothing) {
    glLoadIdentity();
    glRotatef(30, 0, 0, 0);
    Compare(opengl::Rotation(30, 0, 0, 0));
}

TEST_F(View, IsTheProductInTheOrderOfTheCalls) {
    glLoadIdentity();
    glTranslatef(1, 2, 3);
    glScalef(2, 3, 4);
    glRotatef(30, 0, 0, 1);
    Compare(opengl::Translation(1, 2, 3) * opengl::Scaling(2, 3, 4) *
            opengl::Rotation(30, 0, 0, 1));
}
