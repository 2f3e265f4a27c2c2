// A real GLUT window, for pictures with GLUT's own spheres and letters.
#pragma once

#include "Picture.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

namespace gltest {

inline constexpr int windowSide = 512; // pixels

/// Each test starts with OpenGL's initial state and a black picture; a model unit is a pixel, the
/// origin is in the middle, and the visible depth is 1000 units to the front and the back.
class GlutWindow : public testing::Test {
protected:
    GlutWindow();
    ~GlutWindow() override;

    /// The picture drawn so far.
    static Picture Drawn();

    /// Whether a pixel within @p reach pixels of (@p x, @p y), in model units from the middle, y
    /// up, has colour @p expected.
    static testing::AssertionResult IsNear(const Picture& picture, double x, double y,
                                           const Rgba& expected, int reach = 1);

    /// A texture of two by two texels, the first row first, unfiltered; bound and switched on.
    static void BindTexels(const Rgba (&texels)[4]);
};

/// The pixel at @p x, @p y model units from the middle, y up.
Rgba At(const Picture& picture, double x, double y);

} // namespace gltest
