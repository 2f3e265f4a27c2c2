// Backgrounds, vertices and mirrors as they are seen.
#include "Background.h"
#include "DemoEngine.h"
#include "GlutWindow.h"
#include "Vertex.h"

#include <GL/glut.h>

using gltest::At;
using gltest::Picture;
using gltest::Rgba;
using namespace gltest::colours;

namespace {

constexpr Rgba fourColours[4] = {red, green, blue, white}; // first row red and green

using BackgroundPicture = gltest::GlutWindow;
using VertexPicture = gltest::GlutWindow;

class SphereMapPicture : public gltest::GlutWindow {
protected:
    // Far from the eye, so that its normals alone say what it mirrors.
    static Picture DrawSphere() {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glPushMatrix();
        glTranslatef(0, 0, -700);
        glutSolidSphere(100, 60, 60);
        glPopMatrix();
        return Drawn();
    }

    static GLint Mode(GLenum coordinate) {
        GLint mode = 0;
        glGetTexGeniv(coordinate, GL_TEXTURE_GEN_MODE, &mode);
        return mode;
    }

    engine::DemoEngine* demo = new engine::DemoEngine("mirror"); // never freed, as in a demo
};

} // namespace

TEST_F(BackgroundPicture, ShowsTheFirstRowOfTheTextureAtItsTop) {
    BindTexels(fourColours);
    GLint texture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
    glBindTexture(GL_TEXTURE_2D, 0);

    engine::DrawBackground(100, 50, static_cast<unsigned long>(texture));

    const Picture picture = Drawn();
    EXPECT_EQ(At(picture, -98, 48), red);
    EXPECT_EQ(At(picture, 97, 48), green);
    EXPECT_EQ(At(picture, -98, -48), blue);
    EXPECT_EQ(At(picture, 97, -48), white);
    EXPECT_EQ(At(picture, -103, 0), black);
    EXPECT_EQ(At(picture, 0, 53), black);
}

TEST_F(BackgroundPicture, WithTextureZeroIsDrawnInTheCurrentColour) {
    glEnable(GL_TEXTURE_2D);
    glColor3f(0, 1, 0);

    engine::DrawBackground(100, 50, 0);

    EXPECT_EQ(At(Drawn(), 0, 0), green);
}

TEST_F(BackgroundPicture, IsMirroredByANegativeWidth) {
    BindTexels(fourColours);
    GLint texture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);

    engine::DrawBackground(-100, 50, static_cast<unsigned long>(texture));

    EXPECT_EQ(At(Drawn(), -98, 48), green);
    EXPECT_EQ(At(Drawn(), 97, 48), red);
}

TEST_F(VertexPicture, InAStripBringsItsOwnColour) {
    glColor3f(1, 1, 1);
    glBegin(GL_TRIANGLE_STRIP);
    for (int i = 0; i < 6; ++i) {
        const int column = i / 2;
        engine::Vertex vertex(static_cast<float>(column) * 100 - 100, i % 2 == 0 ? -50.0F : 50.0F,
                              0);
        vertex.hasColour = true;
        (i < 4 ? vertex.r : vertex.b) = 1; // red up to the middle, then towards blue
        vertex.DrawVertex();
    }
    glEnd();

    const Picture picture = Drawn();
    EXPECT_EQ(At(picture, -60, 20), red);
    EXPECT_EQ(At(picture, -60, -20), red);
    EXPECT_GT(At(picture, 90, 0).blue, 200);
    EXPECT_LT(At(picture, 90, 0).red, 55);
    EXPECT_EQ(At(picture, 0, 53), black);
}

TEST_F(VertexPicture, InAStripBringsItsOwnTextureCoordinate) {
    BindTexels(fourColours);
    glBegin(GL_TRIANGLE_STRIP);
    for (int i = 0; i < 4; ++i) {
        const auto s = i < 2 ? 0.0F : 1.0F;
        const auto t = i % 2 == 0 ? 0.0F : 1.0F;
        engine::Vertex vertex(s * 200 - 100, t * 200 - 100, 0, s, t);
        vertex.DrawVertex();
    }
    glEnd();

    const Picture picture = Drawn();
    EXPECT_EQ(At(picture, -50, -50), red);
    EXPECT_EQ(At(picture, 50, -50), green);
    EXPECT_EQ(At(picture, -50, 50), blue);
    EXPECT_EQ(At(picture, 50, 50), white);
}

TEST_F(VertexPicture, WithoutItsOwnColourHasTheCurrentOne) {
    glColor3f(0, 0, 1);
    glBegin(GL_TRIANGLES);
    engine::Vertex(-100, -100, 0).DrawVertex();
    engine::Vertex(100, -100, 0).DrawVertex();
    engine::Vertex(0, 100, 0).DrawVertex();
    glEnd();

    EXPECT_EQ(At(Drawn(), 0, 0), blue);
}

TEST_F(SphereMapPicture, MirrorsTheTextureByItsNormals) {
    BindTexels(fourColours);

    demo->EnableSEM();

    const Picture picture = DrawSphere();
    EXPECT_EQ(At(picture, -40, -40), red);
    EXPECT_EQ(At(picture, 40, -40), green);
    EXPECT_EQ(At(picture, -40, 40), blue);
    EXPECT_EQ(At(picture, 40, 40), white);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM)); // the two calls OpenGL refuses
}

TEST_F(SphereMapPicture, EndsWithDisable) {
    BindTexels(fourColours);
    glTexCoord2f(0.25F, 0.25F);
    const Picture before = DrawSphere();
    demo->EnableSEM();
    const Picture mirrored = DrawSphere();
    glGetError();

    demo->DisableSEM();

    EXPECT_EQ(At(before, -40, 40), red); // one texel all over
    EXPECT_EQ(At(before, 40, 40), red);
    EXPECT_FALSE(mirrored == before);
    EXPECT_TRUE(DrawSphere() == before);
}

TEST_F(SphereMapPicture, IsAStateOfBothCoordinates) {
    demo->EnableSEM();

    EXPECT_EQ(Mode(GL_S), GL_SPHERE_MAP);
    EXPECT_EQ(Mode(GL_T), GL_SPHERE_MAP);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_GEN_S));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_GEN_T));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_ENUM));

    demo->DisableSEM();

    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_S));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_T));
}
