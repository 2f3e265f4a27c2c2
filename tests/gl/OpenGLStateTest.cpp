// The show's fixed OpenGL state, asked of a real context.
#include "OpenGLState.h"

#include "Show.h"

#include "DemoEngine.h"
#include "LightEngine.h"
#include "main.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <array>

namespace {

using Floats = std::array<float, 4>;

class RealOpenGLState : public gltest::Show {
protected:
    RealOpenGLState() { SetGL(); }
};

int Integer(GLenum parameter) {
    GLint value = -1;
    glGetIntegerv(parameter, &value);
    return value;
}

float Float(GLenum parameter) {
    float value = -1;
    glGetFloatv(parameter, &value);
    return value;
}

Floats FourFloats(GLenum parameter) {
    Floats values = {-1, -1, -1, -1};
    glGetFloatv(parameter, values.data());
    return values;
}

Floats Light(GLenum parameter) {
    Floats values = {-1, -1, -1, -1};
    glGetLightfv(GL_LIGHT0, parameter, values.data());
    return values;
}

Floats Material(GLenum face, GLenum parameter) {
    Floats values = {-1, -1, -1, -1};
    glGetMaterialfv(face, parameter, values.data());
    return values;
}

bool IsEnabled(GLenum capability) {
    return glIsEnabled(capability) == GL_TRUE;
}

} // namespace

TEST_F(RealOpenGLState, BlendsByTheSourcesAlpha) {
    EXPECT_EQ(Integer(GL_BLEND_SRC), GL_SRC_ALPHA);
    EXPECT_EQ(Integer(GL_BLEND_DST), GL_ONE_MINUS_SRC_ALPHA);
}

TEST_F(RealOpenGLState, WouldDropAlphaUpToATenth) {
    EXPECT_EQ(Integer(GL_ALPHA_TEST_FUNC), GL_GREATER);
    EXPECT_EQ(Float(GL_ALPHA_TEST_REF), 0.1F);
}

TEST_F(RealOpenGLState, ClearsToTransparentBlackAndTheFarthestDepth) {
    glClearColor(1, 1, 1, 1);
    glClearDepth(0.5);

    SetGL();

    EXPECT_EQ(FourFloats(GL_COLOR_CLEAR_VALUE), (Floats{0, 0, 0, 0}));
    EXPECT_EQ(Float(GL_DEPTH_CLEAR_VALUE), 1.0F);
}

TEST_F(RealOpenGLState, TestsDepthAndLetsEqualDepthThrough) {
    EXPECT_TRUE(IsEnabled(GL_DEPTH_TEST));
    EXPECT_EQ(Integer(GL_DEPTH_FUNC), GL_LEQUAL);
}

TEST_F(RealOpenGLState, EnablesTexturesAndAsksForTheBestPerspective) {
    EXPECT_TRUE(IsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(Integer(GL_PERSPECTIVE_CORRECTION_HINT), GL_NICEST);
}

TEST_F(RealOpenGLState, DoesNotEnableLightingAlphaTestCullingOrBlending) {
    EXPECT_FALSE(IsEnabled(GL_LIGHTING));
    EXPECT_FALSE(IsEnabled(GL_ALPHA_TEST));
    EXPECT_FALSE(IsEnabled(GL_CULL_FACE));
    EXPECT_FALSE(IsEnabled(GL_BLEND));
}

TEST_F(RealOpenGLState, LeavesShadingPolygonModeAndFogAtOpenGLsDefaults) {
    EXPECT_EQ(Integer(GL_SHADE_MODEL), GL_SMOOTH);
    std::array<GLint, 2> polygonModes = {};
    glGetIntegerv(GL_POLYGON_MODE, polygonModes.data());
    EXPECT_EQ(polygonModes, (std::array<GLint, 2>{GL_FILL, GL_FILL}));
    EXPECT_FALSE(IsEnabled(GL_FOG));
}

TEST_F(RealOpenGLState, MakesTheAmbientGreyTheLightsDiffuseColourToo) {
    EXPECT_EQ(FourFloats(GL_LIGHT_MODEL_AMBIENT), (Floats{0.6F, 0.6F, 0.6F, 1}));
    EXPECT_EQ(Light(GL_DIFFUSE), (Floats{0.6F, 0.6F, 0.6F, 1}));
}

TEST_F(RealOpenGLState, SetsTheRestOfTheLightAndLeavesItsAmbientAndDirectionAlone) {
    EXPECT_TRUE(IsEnabled(GL_LIGHT0));
    EXPECT_EQ(Light(GL_SPECULAR), (Floats{1, 1, 1, 1}));
    EXPECT_EQ(Light(GL_SPOT_CUTOFF)[0], 60.0F);
    EXPECT_EQ(Light(GL_AMBIENT), (Floats{0, 0, 0, 1}));
    const Floats direction = Light(GL_SPOT_DIRECTION);
    EXPECT_EQ((std::array{direction[0], direction[1], direction[2]}), (std::array{0.F, 0.F, -1.F}));
}

TEST_F(RealOpenGLState, PutsTheLightWhereTheModelViewMatrixTakesIt) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(1, 2, -5);

    SetGL();

    EXPECT_EQ(Light(GL_POSITION), (Floats{1, 52, -5, 1}));
}

TEST_F(RealOpenGLState, SetsTheFrontMaterialAndLetsTheColourDriveIt) {
    EXPECT_TRUE(IsEnabled(GL_COLOR_MATERIAL));
    EXPECT_EQ(Integer(GL_COLOR_MATERIAL_FACE), GL_FRONT);
    EXPECT_EQ(Integer(GL_COLOR_MATERIAL_PARAMETER), GL_AMBIENT_AND_DIFFUSE);
    EXPECT_EQ(Material(GL_FRONT, GL_SPECULAR), (Floats{1, 1, 1, 1}));
    EXPECT_EQ(Material(GL_FRONT, GL_SHININESS)[0], 128.0F);
    EXPECT_EQ(Material(GL_BACK, GL_SPECULAR), (Floats{0, 0, 0, 1}));
}

TEST_F(RealOpenGLState, OfTheLightIsTheSameWhenItIsActivatedAgain) {
    demo->light->ActivateLight();

    EXPECT_TRUE(IsEnabled(GL_LIGHT0));
    EXPECT_FALSE(IsEnabled(GL_LIGHTING));
    EXPECT_EQ(FourFloats(GL_LIGHT_MODEL_AMBIENT), (Floats{0.6F, 0.6F, 0.6F, 1}));
    EXPECT_EQ(Light(GL_DIFFUSE), (Floats{0.6F, 0.6F, 0.6F, 1}));
    EXPECT_EQ(Light(GL_SPOT_CUTOFF)[0], 60.0F);
}

TEST_F(RealOpenGLState, RaisesNoError) {
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}
