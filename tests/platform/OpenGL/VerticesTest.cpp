// Positions, colours and places in the texture of vertices, as the system's OpenGL has them.
#include "Both.h"

#include "OffscreenContext.h"
#include "Texels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr GLsizei width = 640;
constexpr GLsizei height = 480;

/// x, y and depth in the window, w, then the colour, then s, t, q.
using Figures = std::array<float, 11>;

Figures FiguresOf(const opengl::Vertex& vertex) {
    const opengl::Vector4& p = vertex.position;
    const auto& [red, green, blue, alpha] = vertex.colour;
    return {(p[0] / p[3] + 1) / 2 * width,
            (p[1] / p[3] + 1) / 2 * height,
            (p[2] / p[3] + 1) / 2,
            p[3],
            red,
            green,
            blue,
            alpha,
            vertex.texture[0],
            vertex.texture[1],
            vertex.texture[2]};
}

/// The corners of the polygons in a feedback buffer of type GL_4D_COLOR_TEXTURE.
std::vector<Figures> Corners(const std::vector<float>& feedback) {
    std::vector<Figures> corners;
    for (auto value = feedback.begin(); value != feedback.end();) {
        EXPECT_EQ(*value++, static_cast<float>(GL_POLYGON_TOKEN));
        for (auto count = static_cast<int>(*value++); count > 0; --count, value += 12) {
            corners.push_back({value[0], value[1], value[2], value[3], value[4], value[5], value[6],
                               value[7], value[8], value[9], value[11]});
        }
    }
    return corners;
}

/// Each triangle from its leftmost corner on: with which it begins is for OpenGL to choose.
std::vector<Figures> FromTheLeft(std::vector<Figures> corners) {
    for (auto first = corners.begin(); first != corners.end(); first += 3) {
        std::rotate(first, std::min_element(first, first + 3), first + 3);
    }
    return corners;
}

class Vertices : public testing::TestWithParam<GLenum> {
protected:
    Vertices() {
        both.Viewport(0, 0, width, height);
        both.MatrixMode(GL_PROJECTION);
        both.Perspective(45.0, 4.0 / 3.0, 1.0, 2500.0);
        both.MatrixMode(GL_MODELVIEW);
    }

    /// Texturing has no effect, and shows none, without a picture.
    void EnableTexture() {
        constexpr gltest::Rgba texels[4] = {};
        gltest::BindNewTexture(texels);
        both.Enable(GL_TEXTURE_2D);
    }

    float Between(float least, float most) {
        return std::uniform_real_distribution<float>(least, most)(random);
    }

    void Fill(float (&values)[4], float least, float most) {
        for (float& value : values) {
            value = Between(least, most);
        }
    }

    /// Keeps what is drawn about there in sight.
    void TransformAtRandom() {
        both.LoadIdentity();
        both.Translate(Between(-9, 9), Between(-9, 9), Between(-200, -100));
        both.Rotate(Between(-180, 180), Between(-1, 1), Between(-1, 1), Between(-1, 1));
        both.Scale(Between(0.5F, 2), Between(0.5F, 2), Between(0.5F, 2));
    }

    void LightAtRandom() {
        float values[4];
        for (const auto light : {GLenum{GL_LIGHT0}, GLenum{GL_LIGHT3}}) {
            for (const auto parameter :
                 {GLenum{GL_AMBIENT}, GLenum{GL_DIFFUSE}, GLenum{GL_SPECULAR}}) {
                Fill(values, 0, 0.6F);
                both.Light(light, parameter, values);
            }
            Fill(values, -90, 90);
            values[3] = light == GL_LIGHT0 ? 1.0F : 0.0F;
            both.Light(light, GL_POSITION, values);
            both.Enable(light);
        }
        both.Light(GL_LIGHT0, GL_SPOT_CUTOFF, Between(20, 90));
        Fill(values, 0, 0.3F);
        both.LightModel(GL_LIGHT_MODEL_AMBIENT, values);
        Fill(values, 0, 1);
        both.Material(GL_FRONT, GL_SPECULAR, values);
        both.Material(GL_FRONT, GL_SHININESS, Between(0, 128));
        both.Enable(GL_LIGHTING);
    }

    void DrawAtRandom(GLenum mode) {
        both.Begin(mode);
        for (int i = 0; i < 12; ++i) {
            both.Color(Between(0, 1), Between(0, 1), Between(0, 1.5F));
            both.TexCoord(Between(-2, 2), Between(-2, 2));
            both.Normal(Between(-1, 1), Between(-1, 1), Between(-1, 1));
            both.Vertex(Between(-9, 9), Between(-9, 9), Between(-9, 9));
        }
        both.End();
    }

    /// Compares what @p draw draws.
    template <typename Draw>
    void Compare(Draw draw) {
        std::vector<float> feedback(100'000);
        glFeedbackBuffer(static_cast<GLsizei>(feedback.size()), GL_4D_COLOR_TEXTURE,
                         feedback.data());
        glRenderMode(GL_FEEDBACK);
        draw();
        feedback.resize(static_cast<std::size_t>(glRenderMode(GL_RENDER)));
        both.ours.FinishFrame();

        std::vector<Figures> drawn;
        for (const auto& batch : std::exchange(both.canvas.batches, {})) {
            for (const opengl::Vertex& vertex : batch.vertices) {
                drawn.push_back(FiguresOf(vertex));
            }
        }
        ASSERT_GT(drawn.size(), 0U);
        ASSERT_EQ(drawn.size(), Corners(feedback).size());
        drawn = FromTheLeft(drawn);
        const std::vector<Figures> expected = FromTheLeft(Corners(feedback));
        for (std::size_t i = 0; i < drawn.size(); ++i) {
            for (std::size_t figure = 0; figure < drawn[i].size(); ++figure) {
                ASSERT_NEAR(drawn[i][figure], expected[i][figure], tolerances[figure])
                    << "figure " << figure << " of vertex " << i;
            }
        }
    }

    // A hundredth of a pixel; half a level of 255.
    static constexpr Figures tolerances = {0.01F,  0.01F,  1e-5F,  0.01F,  0.002F, 0.002F,
                                           0.002F, 0.002F, 0.001F, 0.001F, 1e-5F};

    OffscreenContext context{width, height};
    gltest::Both both;
    std::minstd_rand random{7};
};

constexpr int repeats = 50;

} // namespace

TEST_P(Vertices, AreTransformed) {
    for (int i = 0; i < repeats; ++i) {
        TransformAtRandom();
        Compare([this] { DrawAtRandom(GetParam()); });
    }
}

TEST_P(Vertices, AreLit) {
    for (int i = 0; i < repeats; ++i) {
        both.LoadIdentity();
        both.Rotate(Between(-180, 180), 0, 1, 0); // lights move with it
        LightAtRandom();
        TransformAtRandom();
        Compare([this] { DrawAtRandom(GetParam()); });
    }
}

TEST_P(Vertices, AreLitByNormalsOfLengthOne) {
    both.Enable(GL_NORMALIZE);
    for (int i = 0; i < repeats; ++i) {
        both.LoadIdentity();
        LightAtRandom();
        TransformAtRandom();
        Compare([this] { DrawAtRandom(GetParam()); });
    }
}

TEST_P(Vertices, HaveMaterialsThatFollowTheirColours) {
    for (const auto mode : {GLenum{GL_AMBIENT_AND_DIFFUSE}, GLenum{GL_AMBIENT}, GLenum{GL_DIFFUSE},
                            GLenum{GL_SPECULAR}}) {
        both.LoadIdentity();
        LightAtRandom();
        both.Enable(GL_COLOR_MATERIAL);
        both.ColorMaterial(GL_FRONT, mode);
        TransformAtRandom();
        Compare([this] { DrawAtRandom(GetParam()); });
        both.Disable(GL_COLOR_MATERIAL); // keeps the last colour
        Compare([this] { DrawAtRandom(GetParam()); });
    }
}

TEST_P(Vertices, HaveTransformedTextureCoordinates) {
    EnableTexture();
    for (int i = 0; i < repeats; ++i) {
        both.MatrixMode(GL_TEXTURE);
        both.LoadIdentity();
        both.Translate(Between(-1, 1), Between(-1, 1), 0);
        both.Rotate(Between(-180, 180), 0, 0, 1);
        both.Scale(Between(-2, 2), Between(-2, 2), 1);
        both.MatrixMode(GL_MODELVIEW);
        TransformAtRandom();
        Compare([this] { DrawAtRandom(GetParam()); });
    }
}

TEST_P(Vertices, MirrorTheirSurroundings) {
    EnableTexture();
    both.Enable(GL_NORMALIZE);
    both.TexGen(GL_S, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    both.TexGen(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    both.Enable(GL_TEXTURE_GEN_S);
    both.Enable(GL_TEXTURE_GEN_T);
    for (int i = 0; i < repeats; ++i) {
        TransformAtRandom();
        Compare([this] { DrawAtRandom(GetParam()); });
    }
}

TEST_P(Vertices, TakeTextureCoordinatesFromTheirPositions) {
    EnableTexture();
    both.TexGen(GL_T, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR); // S: GL_EYE_LINEAR
    both.Enable(GL_TEXTURE_GEN_S);
    both.Enable(GL_TEXTURE_GEN_T);
    TransformAtRandom();
    Compare([this] { DrawAtRandom(GetParam()); });
}

TEST_P(Vertices, GoOnWithTheAttributesThatWereSaved) {
    TransformAtRandom();
    both.Color(0.1F, 0.2F, 0.3F);
    both.TexCoord(0.4F, 0.5F);
    both.PushAttrib(GL_CURRENT_BIT);
    both.Color(1, 1, 1);
    both.TexCoord(1, 1);
    both.PopAttrib();
    Compare([this] {
        both.Begin(GetParam());
        for (int i = 0; i < 4; ++i) {
            both.Vertex(Between(-9, 9), Between(-9, 9), Between(-9, 9));
        }
        both.End();
    });
}

INSTANTIATE_TEST_SUITE_P(Of, Vertices,
                         testing::Values(GL_TRIANGLES, GL_TRIANGLE_STRIP, GL_TRIANGLE_FAN, GL_QUADS,
                                         GL_QUAD_STRIP, GL_POLYGON),
                         [](const testing::TestParamInfo<GLenum>& test) {
                             return "Mode" + std::to_string(test.param);
                         });
