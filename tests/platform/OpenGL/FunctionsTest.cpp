// The functions by their own names hand each argument on to where it belongs.
#include "RecordingCanvas.h"

#include "Current.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <optional>

namespace {

std::optional<opengl::FixedFunction> context;

} // namespace

opengl::FixedFunction& opengl::Current() {
    return *context;
}

namespace {

class Functions : public testing::Test {
protected:
    Functions() { context.emplace(canvas); }

    /// A triangle with one corner at that place and two at the origin; what is drawn of it.
    const gltest::RecordingCanvas::Batch& DrawTriangle(float x, float y, float z) {
        glBegin(GL_TRIANGLES);
        glVertex3f(x, y, z);
        glVertex3f(0, 0, 0);
        glVertex3f(0, 0, 0);
        glEnd();
        context->FinishFrame();
        return canvas.batches.back();
    }

    void ExpectPlace(std::array<float, 3> vertex, std::array<float, 4> expected) {
        const auto& place = DrawTriangle(vertex[0], vertex[1], vertex[2]).vertices.front().position;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_NEAR(place[i], expected[i], 1e-6F) << "coordinate " << i;
        }
    }

    gltest::RecordingCanvas canvas;
};

TEST_F(Functions, MoveTurnAndScale) {
    glTranslatef(1, 2, 3);
    glRotatef(90, 0, 0, 1);
    glScalef(2, 3, 4);
    ExpectPlace({1, 1, 1}, {-2, 4, 7, 1});
}

TEST_F(Functions, LookAtAPlaceFromAnother) {
    gluLookAt(1, 2, 3, 5, 2, 3, 0, 0, 1);
    ExpectPlace({3, 2, 4}, {0, 1, -2, 1}); // 2 ahead, 1 up
}

TEST_F(Functions, SeeInPerspective) {
    gluPerspective(90, 2, 1, 3);
    ExpectPlace({2, 1, -1}, {1, 1, -1, 1}); // the near corner
}

TEST_F(Functions, ColourByBytes) {
    glColor3ub(51, 102, 255);
    const auto& colour = DrawTriangle(1, 0, 0).vertices.front().colour;
    EXPECT_FLOAT_EQ(colour[0], 0.2F);
    EXPECT_FLOAT_EQ(colour[1], 0.4F);
    EXPECT_FLOAT_EQ(colour[2], 1.0F);
}

TEST_F(Functions, BlendAndCompareWithinAViewport) {
    glEnable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthFunc(GL_LEQUAL);
    glViewport(1, 2, 30, 40);
    const opengl::DrawState& state = DrawTriangle(1, 0, 0).state;
    EXPECT_EQ(state.blendSource, GLenum{GL_SRC_ALPHA});
    EXPECT_EQ(state.blendDestination, GLenum{GL_ONE_MINUS_SRC_ALPHA});
    EXPECT_EQ(state.depthFunction, GLenum{GL_LEQUAL});
    EXPECT_EQ(state.viewport, (opengl::Viewport{1, 2, 30, 40}));
}

TEST_F(Functions, ClearToAColourAndADepth) {
    glClearColor(0.1F, 0.2F, 0.3F, 0.4F);
    glClearDepth(0.5);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    ASSERT_EQ(canvas.clears.size(), 1U);
    EXPECT_EQ(canvas.clears[0].colour, (opengl::Colour{0.1F, 0.2F, 0.3F, 0.4F}));
    EXPECT_EQ(canvas.clears[0].depth, 0.5F);
}

TEST_F(Functions, RefuseNumbersBeyondTheirRange) {
    glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, 128);
    glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 90);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, 129);
    EXPECT_EQ(glGetError(), GLenum{GL_INVALID_VALUE});
    glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 91);
    EXPECT_EQ(glGetError(), GLenum{GL_INVALID_VALUE});
    glTexGeni(GL_S, GL_SPHERE_MAP, 0);
    EXPECT_EQ(glGetError(), GLenum{GL_INVALID_ENUM});
}

} // namespace
