// The ring.
#include "Scene2.h"

#include "Loader.h"
#include "Scene1.h"
#include "main.h"

#include "Effects.h"
#include "ShowFixture.h"

#include <gmock/gmock.h>

#include <cmath>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Text;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class Scene2Test : public ShowFixture {
protected:
    static std::string Scene() {
        return EffectsOf([] { Scene2(); });
    }
};

/// Vertex @p i of 0, 2, ..., 358 with the turn that OpenGL refuses before it.
std::string VertexLines(int i) {
    const double a = i * 0.017444444444444446; // 3.14 / 180
    return doubles::Lines({
        "glRotatef(" + Text(i) + ", 0, 0, 0)",
        "glVertex3f(" + Text(static_cast<float>(std::cos(a) * 50)) + ", " +
            Text(static_cast<float>(std::sin(a) * 50)) + ", 0)",
    });
}

TEST_F(Scene2Test, DrawsARedRing) {
    std::string expected = doubles::Lines({
        "glLoadIdentity()",
        "glTranslatef(0, 0, -700)",
        "glColor3f(1, 0, 0)",
        "glRotatef(1, 1, 0, 0.1)",
        "glPointSize(1)",
        "glBegin(GL_TRIANGLES)",
    });
    for (int i = 0; i <= 358; i += 2) {
        expected += VertexLines(i);
    }
    EXPECT_EQ(Scene(), expected + "glEnd()\n");
}

TEST_F(Scene2Test, RingGoesFromTheRightOverTheTopAndStaysOpen) {
    const std::string vertices = doubles::Only("glVertex3f(", Scene());
    EXPECT_THAT(vertices, StartsWith("glVertex3f(50, 0, 0)\n"
                                     "glVertex3f(49.969574, 1.7440906, 0)\n"));
    EXPECT_THAT(vertices, HasSubstr("\nglVertex3f(0.039816335, 49.999985, 0)\n")); // i = 90
    EXPECT_THAT(vertices, HasSubstr("\nglVertex3f(-49.999935, 0.07963265, 0)\n")); // i = 180
    EXPECT_THAT(vertices, EndsWith("\nglVertex3f(49.963764, -1.9032499, 0)\n"));
}

TEST_F(Scene2Test, TurnsByADegreeACall) {
    rotate = 12.5F;
    for (int call = 1; call <= 400; ++call) {
        const std::string turn = Text(12.5F + static_cast<float>(call));
        ASSERT_THAT(Scene(), HasSubstr("\nglRotatef(" + turn + ", 1, 0, 0.1)\n"));
    }
    EXPECT_EQ(rotate, 412.5F);
}

TEST_F(Scene2Test, TurnIsAddedInSinglePrecision) {
    rotate = 16777216.0F; // the next float is 2 more
    Scene();
    EXPECT_EQ(rotate, 16777216.0F);
}

TEST_F(Scene2Test, TurnsTheBoxOfTheFirstSceneToo) {
    MakeDemo();
    Load();
    Scene();
    EXPECT_THAT(EffectsOf([] { Scene1(); }), HasSubstr("\nglRotatef(1.1, 1, 0, 0.1)\n"));
}

TEST_F(Scene2Test, ChangesNothingElseOfTheShow) {
    Scene();
    EXPECT_EQ(globalAngle, 0.0F);
    EXPECT_EQ(loaded, 0);
    EXPECT_EQ(kasse, nullptr);
}

} // namespace
