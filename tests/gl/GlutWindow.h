// A real GLUT window, for pictures of what is drawn by GLUT's own spheres and letters.
#pragma once

#include "Picture.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

namespace gltest {

inline constexpr int windowSide = 512; // pixels

/// Each test begins with OpenGL's initial state and a black picture, a model unit a pixel, the
/// origin in the middle, and 1000 units to the front and the back to be seen.
class GlutWindow : public testing::Test {
protected:
    GlutWindow();
    ~GlutWindow() override;

    /// What is drawn so far, at @p x, @p y model units from the middle, y up.
    static Picture Drawn();

    /// Whether a pixel within @p reach pixels of that place has colour @p expected.
    static testing::AssertionResult IsNear(const Picture& picture, double x, double y,
                                           const Rgba& expected, int reach = 1);

    /// A texture of two by two texels, the first row first, unfiltered; bound and switched on.
    static void BindTexels(const Rgba (&texels)[4]);
};

/// The pixel at @p x, @p y model units from the middle, y up.
Rgba At(const Picture& picture, double x, double y);

} // namespace gltest
