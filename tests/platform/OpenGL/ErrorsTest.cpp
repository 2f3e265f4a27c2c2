// Errors, as the system's OpenGL raises them.
#include "Both.h"

#include "OffscreenContext.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using gltest::Both;

struct Mistake {
    const char* name;
    void (*make)(Both&);
};

std::ostream& operator<<(std::ostream& out, const Mistake& mistake) {
    return out << mistake.name;
}

void Within(Both& both, void (*call)(Both&)) {
    both.Begin(GL_QUADS);
    call(both);
    both.End();
}

constexpr float zeros[4] = {};

class Errors : public testing::TestWithParam<Mistake> {
protected:
    OffscreenContext context{16, 16};
    Both both;
};

const Mistake mistakes[] = {
    {"None", [](Both& both) { both.LoadIdentity(); }},
    {"ModeOfSphereMapAsParameter", [](Both& both) { both.TexGen(GL_S, GL_SPHERE_MAP, 0); }},
    {"UnknownTexGenMode", [](Both& both) { both.TexGen(GL_T, GL_TEXTURE_GEN_MODE, GL_LINEAR); }},
    {"TexGenOfNoCoordinate",
     [](Both& both) { both.TexGen(GL_TEXTURE_2D, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP); }},
    {"RotateWithin", [](Both& both) { Within(both, [](Both& b) { b.Rotate(2, 0, 0, 0); }); }},
    {"LoadIdentityWithin", [](Both& both) { Within(both, [](Both& b) { b.LoadIdentity(); }); }},
    {"MatrixModeWithin",
     [](Both& both) { Within(both, [](Both& b) { b.MatrixMode(GL_TEXTURE); }); }},
    {"PushWithin", [](Both& both) { Within(both, [](Both& b) { b.PushMatrix(); }); }},
    {"PopWithin", [](Both& both) { Within(both, [](Both& b) { b.PopMatrix(); }); }},
    {"EnableWithin", [](Both& both) { Within(both, [](Both& b) { b.Enable(GL_BLEND); }); }},
    {"BindTextureWithin",
     [](Both& both) { Within(both, [](Both& b) { b.BindTexture(GL_TEXTURE_2D, 0); }); }},
    {"ClearWithin",
     [](Both& both) { Within(both, [](Both& b) { b.Clear(GL_COLOR_BUFFER_BIT); }); }},
    {"LineWidthWithin", [](Both& both) { Within(both, [](Both& b) { b.LineWidth(2); }); }},
    {"LightWithin",
     [](Both& both) { Within(both, [](Both& b) { b.Light(GL_LIGHT0, GL_DIFFUSE, zeros); }); }},
    {"MaterialWithin",
     [](Both& both) { Within(both, [](Both& b) { b.Material(GL_FRONT, GL_DIFFUSE, zeros); }); }},
    {"PushAttribWithin",
     [](Both& both) { Within(both, [](Both& b) { b.PushAttrib(GL_CURRENT_BIT); }); }},
    {"BeginWithin", [](Both& both) { Within(both, [](Both& b) { b.Begin(GL_LINES); }); }},
    {"EndWithoutBegin", [](Both& both) { both.End(); }},
    {"UnknownPrimitive", [](Both& both) { both.Begin(GL_POLYGON + 10); }},
    {"UnknownMatrixMode", [](Both& both) { both.MatrixMode(GL_TEXTURE_2D); }},
    {"UnknownCapability", [](Both& both) { both.Enable(GL_SPHERE_MAP); }},
    {"UnknownCapabilityToDisable", [](Both& both) { both.Disable(GL_SPHERE_MAP); }},
    {"UnknownTextureTarget", [](Both& both) { both.BindTexture(GL_TEXTURE, 1); }},
    {"UnknownTextureParameter",
     [](Both& both) { both.TexParameter(GL_TEXTURE_2D, GL_TEXTURE, GL_REPEAT); }},
    {"UnknownWrap",
     [](Both& both) { both.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_LINEAR); }},
    {"UnknownFilter",
     [](Both& both) { both.TexParameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_REPEAT); }},
    {"UnknownBlendFactor", [](Both& both) { both.BlendFunc(GL_SRC_ALPHA, GL_LINES + 7); }},
    {"UnknownDepthFunction", [](Both& both) { both.DepthFunc(GL_LINEAR); }},
    {"UnknownAlphaFunction", [](Both& both) { both.AlphaFunc(GL_LINEAR, 0.5F); }},
    {"UnknownHint", [](Both& both) { both.Hint(GL_LINEAR, GL_NICEST); }},
    {"UnknownHintMode", [](Both& both) { both.Hint(GL_PERSPECTIVE_CORRECTION_HINT, GL_LINEAR); }},
    {"UnknownBuffer", [](Both& both) { both.Clear(1); }},
    {"UnknownLight", [](Both& both) { both.Light(GL_LIGHT0 + 8, GL_DIFFUSE, zeros); }},
    {"UnknownLightParameter", [](Both& both) { both.Light(GL_LIGHT0, GL_SHININESS, zeros); }},
    {"SpotTooWide", [](Both& both) { both.Light(GL_LIGHT0, GL_SPOT_CUTOFF, 91.0F); }},
    {"UnknownLightModel", [](Both& both) { both.LightModel(GL_LIGHT0, zeros); }},
    {"UnknownMaterialFace", [](Both& both) { both.Material(GL_LEFT, GL_DIFFUSE, zeros); }},
    {"UnknownMaterialParameter", [](Both& both) { both.Material(GL_FRONT, GL_POSITION, zeros); }},
    {"ShininessTooHigh", [](Both& both) { both.Material(GL_FRONT, GL_SHININESS, 129.0F); }},
    {"UnknownColorMaterial", [](Both& both) { both.ColorMaterial(GL_FRONT, GL_SHININESS); }},
    {"UnknownColorMaterialFace", [](Both& both) { both.ColorMaterial(GL_LEFT, GL_AMBIENT); }},
    {"LineWithoutWidth", [](Both& both) { both.LineWidth(0); }},
    {"PointWithoutSize", [](Both& both) { both.PointSize(-1); }},
    {"ViewportOfNegativeSize", [](Both& both) { both.Viewport(0, 0, -1, 1); }},
    {"PopOfTheLastMatrix", [](Both& both) { both.PopMatrix(); }},
    {"PopOfTheLastAttributes", [](Both& both) { both.PopAttrib(); }},
};

TEST_P(Errors, AreThoseOfOpenGL) {
    GetParam().make(both);

    EXPECT_EQ(both.ours.GetError(), glGetError());
    EXPECT_EQ(both.ours.GetError(), GLenum{GL_NO_ERROR}); // it is told once
}

INSTANTIATE_TEST_SUITE_P(After, Errors, testing::ValuesIn(mistakes),
                         testing::PrintToStringParamName());

// The system's takes three more values from wherever they would be.
TEST_F(Errors, ComeWithOneValueForAColour) {
    both.ours.SetLight(GL_LIGHT0, GL_DIFFUSE, zeros, 1);
    EXPECT_EQ(both.ours.GetError(), GLenum{GL_INVALID_ENUM});
    both.ours.SetMaterial(GL_FRONT, GL_DIFFUSE, zeros, 1);
    EXPECT_EQ(both.ours.GetError(), GLenum{GL_INVALID_ENUM});
}

TEST_F(Errors, AreKeptUntilAsked) {
    both.LineWidth(0);
    both.Enable(GL_SPHERE_MAP);

    EXPECT_EQ(both.ours.GetError(), GLenum{GL_INVALID_VALUE}); // the first
    EXPECT_EQ(glGetError(), GLenum{GL_INVALID_VALUE});
    EXPECT_EQ(both.ours.GetError(), GLenum{GL_NO_ERROR});
}

TEST_F(Errors, AreNotToldWithin) {
    both.Begin(GL_QUADS);
    EXPECT_EQ(both.ours.GetError(), glGetError());
    both.End();
    EXPECT_EQ(both.ours.GetError(), glGetError());
}

TEST_F(Errors, ComeWithTheFirstMatrixBeyondTheStack) {
    for (const auto mode : {GLenum{GL_MODELVIEW}, GLenum{GL_PROJECTION}, GLenum{GL_TEXTURE}}) {
        both.MatrixMode(mode);
        for (int i = 0; i < 40; ++i) {
            both.PushMatrix();
            ASSERT_EQ(both.ours.GetError(), glGetError()) << "push " << i;
        }
    }
}

TEST_F(Errors, ComeWithTheFirstAttributesBeyondTheStack) {
    for (int i = 0; i < 20; ++i) {
        both.PushAttrib(GL_CURRENT_BIT);
        ASSERT_EQ(both.ours.GetError(), glGetError()) << "push " << i;
    }
}

TEST_F(Errors, LeaveStateAsItIs) {
    both.ours.Enable(GL_BLEND);
    both.ours.Begin(GL_LINES);
    both.ours.Disable(GL_BLEND);
    EXPECT_EQ(both.ours.IsEnabled(GL_BLEND), GL_FALSE); // an error, too
    both.ours.End();

    EXPECT_EQ(both.ours.IsEnabled(GL_BLEND), GL_TRUE);
}

} // namespace
