// The sphere and the letters, as the installed GLUT draws them. Both call the OpenGL of this file,
// which keeps what is drawn: no display is needed.
#include <GL/gl.h>
#include <GL/glut.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

struct Corner {
    std::array<float, 3> position;
    std::array<float, 3> normal;
};

struct Primitive {
    GLenum mode;
    std::vector<Corner> corners;
};

struct Drawing {
    std::vector<Primitive> primitives;
    std::vector<std::array<float, 3>> translations;
    std::array<float, 3> normal = {0, 0, 1}; // the current one
    std::vector<std::array<float, 3>> savedNormals;
};

Drawing drawing;
const float* positions = nullptr; // as vertex arrays
const float* normals = nullptr;

std::array<float, 3> Third(const float* array, std::size_t index) {
    return {array[3 * index], array[3 * index + 1], array[3 * index + 2]};
}

} // namespace

extern "C" {

void glBegin(GLenum mode) {
    drawing.primitives.push_back({mode, {}});
}

void glEnd() {}

void glNormal3f(GLfloat x, GLfloat y, GLfloat z) {
    drawing.normal = {x, y, z};
}

void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    drawing.primitives.back().corners.push_back({{x, y, z}, drawing.normal});
}

void glVertex2f(GLfloat x, GLfloat y) {
    glVertex3f(x, y, 0);
}

void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    drawing.translations.push_back({x, y, z});
}

void glPushAttrib(GLbitfield) {
    drawing.savedNormals.push_back(drawing.normal);
}

void glPopAttrib() {
    drawing.normal = drawing.savedNormals.back();
    drawing.savedNormals.pop_back();
}

void glEnableClientState(GLenum) {}

void glDisableClientState(GLenum) {}

void glVertexPointer(GLint, GLenum, GLsizei, const void* array) {
    positions = static_cast<const float*>(array);
}

void glNormalPointer(GLenum, GLsizei, const void* array) {
    normals = static_cast<const float*>(array);
}

void glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    ASSERT_EQ(type, GLenum{GL_UNSIGNED_SHORT});
    Primitive primitive = {mode, {}};
    for (GLsizei i = 0; i < count; ++i) {
        const std::size_t index = static_cast<const std::uint16_t*>(indices)[i];
        primitive.corners.push_back({Third(positions, index), Third(normals, index)});
    }
    drawing.primitives.push_back(primitive);
}

// Of freeglut itself: that it was not initialised is no error here, and there is a window.
void IgnoreError(const char*, ...) __asm__("fgError");
extern const void* const windows[32] __asm__("fgStructure");

void IgnoreError(const char*, ...) {}

static const char window[4096] = {};
const void* const windows[32] = {window, window, window, window, window, window, window,
                                 window, window, window, window, window, window, window};
}

namespace {

/// Of the installed GLUT.
template <typename Function>
Function* Installed(const char* name) {
    static void* const library = dlopen(GLUT_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << dlerror();
    Function* function = nullptr;
    void* const symbol = library != nullptr ? dlsym(library, name) : nullptr;
    std::memcpy(&function, &symbol, sizeof function);
    return function;
}

template <typename Draw, typename... Arguments>
Drawing DrawnBy(Draw draw, Arguments... arguments) {
    drawing = {};
    draw(arguments...);
    return drawing;
}

void ExpectNear(const std::array<float, 3>& found, const std::array<float, 3>& expected,
                float tolerance) {
    for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_NEAR(found[i], expected[i], tolerance);
    }
}

struct SphereCase {
    double radius;
    int slices;
    int stacks;
};

class Sphere : public testing::TestWithParam<SphereCase> {};

TEST_P(Sphere, IsThatOfTheInstalledGlut) {
    const auto& [radius, slices, stacks] = GetParam();
    const Drawing expected =
        DrawnBy(Installed<decltype(glutSolidSphere)>("glutSolidSphere"), radius, slices, stacks);
    const Drawing drawn = DrawnBy(glutSolidSphere, radius, slices, stacks);

    ASSERT_EQ(drawn.primitives.size(), expected.primitives.size());
    ASSERT_GT(drawn.primitives.size(), 0U);
    for (std::size_t i = 0; i < drawn.primitives.size(); ++i) {
        const Primitive& found = drawn.primitives[i];
        const Primitive& wanted = expected.primitives[i];
        EXPECT_EQ(found.mode, wanted.mode);
        ASSERT_EQ(found.corners.size(), wanted.corners.size());
        for (std::size_t corner = 0; corner < found.corners.size(); ++corner) {
            ExpectNear(found.corners[corner].position, wanted.corners[corner].position,
                       static_cast<float>(radius) * 1e-6F);
            ExpectNear(found.corners[corner].normal, wanted.corners[corner].normal, 1e-6F);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Sphere,
                         testing::Values(SphereCase{40, 30, 40}, SphereCase{20, 15, 20},
                                         SphereCase{250, 60, 60}, SphereCase{1, 3, 2},
                                         SphereCase{2, 1, 5}));

TEST(SolidSphere, LeavesTheNormalAsItWas) {
    drawing = {};
    glNormal3f(1, 2, 3);

    glutSolidSphere(1, 5, 5);

    EXPECT_EQ(drawing.normal, (std::array<float, 3>{1, 2, 3}));
}

TEST(SolidSphere, IsNothingWithoutSlicesOrStacks) {
    EXPECT_TRUE(DrawnBy(glutSolidSphere, 1, 0, 5).primitives.empty());
    EXPECT_TRUE(DrawnBy(glutSolidSphere, 1, 5, 0).primitives.empty());
}

TEST(StrokeCharacter, IsThatOfTheInstalledGlut) {
    const auto installed = Installed<decltype(glutStrokeCharacter)>("glutStrokeCharacter");
    std::size_t lines = 0;
    for (int code = -200; code < 400; ++code) {
        const Drawing expected = DrawnBy(installed, GLUT_STROKE_ROMAN, code);
        const Drawing drawn = DrawnBy(glutStrokeCharacter, GLUT_STROKE_ROMAN, code);

        EXPECT_EQ(drawn.translations, expected.translations) << "of " << code;
        ASSERT_EQ(drawn.primitives.size(), expected.primitives.size()) << "of " << code;
        for (std::size_t i = 0; i < drawn.primitives.size(); ++i) {
            EXPECT_EQ(drawn.primitives[i].mode, expected.primitives[i].mode);
            ASSERT_EQ(drawn.primitives[i].corners.size(), expected.primitives[i].corners.size());
            for (std::size_t corner = 0; corner < drawn.primitives[i].corners.size(); ++corner) {
                EXPECT_EQ(drawn.primitives[i].corners[corner].position,
                          expected.primitives[i].corners[corner].position);
            }
        }
        lines += drawn.primitives.size();
    }
    EXPECT_GT(lines, 100U);
}

} // namespace
