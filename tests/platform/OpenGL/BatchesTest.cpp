// How drawing is divided into batches, and in what state each is drawn.
#include "RecordingCanvas.h"

#include "FixedFunction.h"

#include <gtest/gtest.h>

namespace {

class Batches : public testing::Test {
protected:
    void DrawTriangle() {
        opengl.Begin(GL_TRIANGLES);
        for (int i = 0; i < 3; ++i) {
            opengl.PlaceVertex(static_cast<float>(i), 0, 0);
        }
        opengl.End();
    }

    /// The state in which a triangle is drawn now.
    opengl::DrawState State() {
        DrawTriangle();
        opengl.FinishFrame();
        return canvas.batches.back().state;
    }

    GLuint MakeTexture() {
        GLuint name = 0;
        opengl.GenTextures(1, &name);
        opengl.BindTexture(GL_TEXTURE_2D, name);
        opengl.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        return name;
    }

    gltest::RecordingCanvas canvas;
    opengl::FixedFunction opengl{canvas};
};

} // namespace

TEST_F(Batches, AreDrawnAtTheEndOfTheFrame) {
    DrawTriangle();
    EXPECT_EQ(canvas.batches.size(), 0U);

    opengl.FinishFrame();
    EXPECT_EQ(canvas.batches.size(), 1U);

    opengl.FinishFrame();
    EXPECT_EQ(canvas.batches.size(), 1U);
}

TEST_F(Batches, GoOnWhileStateIsTheSame) {
    opengl.Enable(GL_TEXTURE_2D);
    for (int i = 0; i < 10; ++i) {
        opengl.MultiplyMatrix(opengl::Translation(1, 0, 0));
        opengl.SetColor(0, 1, 0);
        opengl.Disable(GL_TEXTURE_2D);
        opengl.Enable(GL_TEXTURE_2D); // of no picture: as if off
        opengl.BindTexture(GL_TEXTURE_2D, static_cast<GLuint>(i));
        DrawTriangle();
    }
    opengl.FinishFrame();

    ASSERT_EQ(canvas.batches.size(), 1U);
    EXPECT_EQ(canvas.batches[0].vertices.size(), 30U);
}

TEST_F(Batches, EndWhereStateChanges) {
    DrawTriangle();
    opengl.Enable(GL_BLEND);
    opengl.BlendFunc(GL_SRC_ALPHA, GL_ONE);
    DrawTriangle();
    opengl.FinishFrame();

    ASSERT_EQ(canvas.batches.size(), 2U);
    EXPECT_EQ(canvas.batches[0].state.blendSource, GLenum{GL_ONE});
    EXPECT_EQ(canvas.batches[0].state.blendDestination, GLenum{GL_ZERO});
    EXPECT_EQ(canvas.batches[1].state.blendSource, GLenum{GL_SRC_ALPHA});
    EXPECT_EQ(canvas.batches[1].state.blendDestination, GLenum{GL_ONE});
}

TEST_F(Batches, AreDrawnBeforeTheCanvasIsCleared) {
    DrawTriangle();
    opengl.ClearColor(0.1F, 0.2F, 0.3F, 0.4F);
    opengl.ClearDepth(9.0);
    opengl.Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    EXPECT_EQ(canvas.batches.size(), 1U);
    ASSERT_EQ(canvas.clears.size(), 1U);
    EXPECT_EQ(canvas.clears[0].buffers, GLbitfield{GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT});
    EXPECT_EQ(canvas.clears[0].colour, (opengl::Colour{0.1F, 0.2F, 0.3F, 0.4F}));
    EXPECT_EQ(canvas.clears[0].depth, 1.0F); // the most there is
}

TEST_F(Batches, AreDrawnWhenTheyAreLarge) {
    for (int i = 0; i < 100'000; ++i) {
        DrawTriangle();
    }
    EXPECT_GE(canvas.batches.size(), 2U);
    for (const auto& batch : canvas.batches) {
        EXPECT_LE(batch.vertices.size(), 66'000U);
    }
}

TEST_F(Batches, HaveTheBoundTextureThatHasAPicture) {
    const GLuint name = MakeTexture();
    opengl.SetTextureHasImage();
    EXPECT_EQ(State().texture, 0U); // texturing is off

    opengl.Enable(GL_TEXTURE_2D);
    EXPECT_EQ(State().texture, name);

    EXPECT_NE(MakeTexture(), name);
    EXPECT_EQ(State().texture, 0U);

    opengl.BindTexture(GL_TEXTURE_2D, name);
    EXPECT_EQ(State().texture, name);

    opengl.BindTexture(GL_TEXTURE_2D, 0);
    EXPECT_EQ(State().texture, 0U);
}

TEST_F(Batches, HaveNoTextureThatLacksItsSmallerPictures) {
    GLuint name = 0;
    opengl.GenTextures(1, &name);
    opengl.BindTexture(GL_TEXTURE_2D, name); // its filter is GL_NEAREST_MIPMAP_LINEAR
    opengl.SetTextureHasImage();
    opengl.Enable(GL_TEXTURE_2D);
    EXPECT_EQ(State().texture, 0U);

    opengl.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    EXPECT_EQ(State().texture, name);
}

TEST_F(Batches, HaveTheSamplingOfTheirTexture) {
    MakeTexture();
    opengl.SetTextureHasImage();
    opengl.Enable(GL_TEXTURE_2D);
    opengl.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP);
    opengl.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    opengl.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);

    const opengl::Sampling expected = {GL_CLAMP, GL_CLAMP_TO_EDGE, GL_LINEAR, GL_NEAREST};
    EXPECT_EQ(State().sampling, expected);
}

TEST_F(Batches, HaveTheTestsThatAreOn) {
    opengl.DepthFunc(GL_LEQUAL);
    opengl.AlphaFunc(GL_GREATER, 0.1F);
    EXPECT_EQ(State().depthTest, 0U);
    EXPECT_EQ(State().alphaFunction, GLenum{GL_ALWAYS});

    opengl.Enable(GL_DEPTH_TEST);
    opengl.Enable(GL_ALPHA_TEST);
    EXPECT_EQ(State().depthTest, 1U);
    EXPECT_EQ(State().depthFunction, GLenum{GL_LEQUAL});
    EXPECT_EQ(State().alphaFunction, GLenum{GL_GREATER});
    EXPECT_EQ(State().alphaReference, 0.1F);
}

TEST_F(Batches, HaveTheViewport) {
    opengl.SetViewport(1, 2, 30, 40);

    EXPECT_EQ(State().viewport, (opengl::Viewport{1, 2, 30, 40}));
}

TEST_F(Batches, HaveNoVertexOfOutside) {
    opengl.PlaceVertex(1, 2, 3);
    DrawTriangle();
    opengl.FinishFrame();

    EXPECT_EQ(canvas.batches.back().vertices.size(), 3U);
}

TEST_F(Batches, HaveNoneOfLinesBehindTheEye) {
    opengl.MatrixMode(GL_PROJECTION);
    opengl.MultiplyMatrix(opengl::Perspective(45, 1, 1, 100));
    opengl.SetViewport(0, 0, 64, 64);
    opengl.Begin(GL_LINES);
    opengl.PlaceVertex(0, 0, 5);
    opengl.PlaceVertex(1, 0, 9);
    opengl.End();
    opengl.FinishFrame();

    EXPECT_TRUE(canvas.batches.empty());
}
