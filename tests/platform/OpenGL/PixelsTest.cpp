// The pixels that lines and points cover, as the system's OpenGL has them.
#include "Both.h"

#include "OffscreenContext.h"
#include "Picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int side = 64;

struct Place {
    float x, y; ///< pixels from the lower left
};

Place OnScreen(const opengl::Vertex& vertex) {
    const opengl::Vector4& p = vertex.position;
    return {(p[0] / p[3] + 1) / 2 * side, (p[1] / p[3] + 1) / 2 * side};
}

/// Twice the area; positive: @p c is on the left of the way from @p a to @p b.
float Area(const Place& a, const Place& b, const Place& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool IsWithin(const std::array<Place, 3>& corners, const Place& place) {
    const float first = Area(corners[0], corners[1], place);
    const float second = Area(corners[1], corners[2], place);
    const float third = Area(corners[2], corners[0], place);
    return (first >= 0 && second >= 0 && third >= 0) || (first <= 0 && second <= 0 && third <= 0);
}

struct Case {
    GLenum mode;
    float size; ///< pixels
};

std::ostream& operator<<(std::ostream& out, const Case& tried) {
    return out << "Mode" << tried.mode << "Size" << tried.size;
}

class Pixels : public testing::TestWithParam<Case> {
protected:
    Pixels() {
        both.Viewport(0, 0, side, side);
        both.LineWidth(GetParam().size);
        both.PointSize(GetParam().size);
    }

    /// In clip coordinates; some lines end beyond the edges of what is seen. Points do not, since
    /// drivers differ in what they show of one whose centre is not seen.
    float Somewhere() {
        const float most = GetParam().mode == GL_POINTS ? 1.0F : 1.2F;
        return std::uniform_real_distribution<float>(-most, most)(random);
    }

    void DrawAtRandom() {
        both.Clear(GL_COLOR_BUFFER_BIT);
        both.Begin(GetParam().mode);
        for (int i = 0; i < 4; ++i) {
            both.Vertex(Somewhere(), Somewhere(), Somewhere());
        }
        both.End();
        both.ours.FinishFrame();
    }

    /// Whether the triangles cover the pixel's centre.
    bool IsCovered(int x, int y) const {
        const Place centre = {static_cast<float>(x) + 0.5F, static_cast<float>(y) + 0.5F};
        const std::vector<opengl::Vertex>& vertices = both.canvas.batches.back().vertices;
        for (std::size_t i = 0; i + 2 < vertices.size(); i += 3) {
            if (IsWithin(
                    {OnScreen(vertices[i]), OnScreen(vertices[i + 1]), OnScreen(vertices[i + 2])},
                    centre)) {
                return true;
            }
        }
        return false;
    }

    OffscreenContext context{side, side};
    gltest::Both both;
    std::minstd_rand random{7};
};

} // namespace

TEST_P(Pixels, AreThoseOfOpenGL) {
    int drawn = 0;
    int different = 0;
    for (int repeat = 0; repeat < 100; ++repeat) {
        DrawAtRandom();
        const gltest::Picture picture = gltest::ReadDrawn(side, side);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const bool expected = picture.At(x, side - 1 - y) == gltest::colours::white;
                drawn += expected ? 1 : 0;
                different += expected != IsCovered(x, y) ? 1 : 0;
            }
        }
    }
    EXPECT_GT(drawn, 200);
    EXPECT_LE(different, drawn / 100) << "of " << drawn; // where a line just meets a pixel's corner
}

INSTANTIATE_TEST_SUITE_P(Of, Pixels,
                         testing::Values(Case{GL_LINES, 1}, Case{GL_LINES, 2}, Case{GL_LINES, 3},
                                         Case{GL_LINE_STRIP, 1}, Case{GL_LINE_STRIP, 2},
                                         Case{GL_LINE_LOOP, 2}, Case{GL_POINTS, 1},
                                         Case{GL_POINTS, 2}, Case{GL_POINTS, 5}),
                         testing::PrintToStringParamName());
