// The point: what it is made of and what it emits.
#include "Vertex.h"

#include "Effects.h"
#include "Fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

class VertexTest : public doubles::Fixture {
protected:
    static std::string Draw(engine::Vertex vertex) {
        return EffectsOf([&] { vertex.DrawVertex(); });
    }

    /// Has these values, and no colour.
    static void ExpectMade(const engine::Vertex& vertex, const std::array<float, 5>& values,
                           bool hasTexCoord) {
        EXPECT_EQ((std::array{vertex.x, vertex.y, vertex.z, vertex.s, vertex.t}), values);
        EXPECT_EQ(vertex.hasTexCoord, hasTexCoord);
        EXPECT_EQ((std::array{vertex.r, vertex.g, vertex.b}), (std::array{0.0F, 0.0F, 0.0F}));
        EXPECT_FALSE(vertex.hasColour);
    }
};

TEST_F(VertexTest, IsMadeOfZerosAPositionOrThatAndATextureCoordinate) {
    ExpectMade(engine::Vertex(), {0, 0, 0, 0, 0}, false);
    ExpectMade(engine::Vertex(1, 2, 3), {1, 2, 3, 0, 0}, false);
    ExpectMade(engine::Vertex(1, 2, 3, 0.25F, 0.75F), {1, 2, 3, 0.25F, 0.75F}, true);
}

TEST_F(VertexTest, HasItsFieldsInOrder) {
    const engine::Vertex vertex;
    EXPECT_TRUE(
        doubles::AreInOrder({&vertex.x, &vertex.y, &vertex.z, &vertex.s, &vertex.t, &vertex.r,
                             &vertex.g, &vertex.b, &vertex.hasTexCoord, &vertex.hasColour}));
    EXPECT_EQ(sizeof vertex.hasTexCoord, 1U);
    EXPECT_EQ(sizeof vertex.hasColour, 1U);
}

TEST_F(VertexTest, EmitsOnlyItsPositionByDefault) {
    EXPECT_EQ(Draw(engine::Vertex()), Lines({"glVertex3f(0, 0, 0)"}));
    EXPECT_EQ(Draw(engine::Vertex(1, -2, 3)), Lines({"glVertex3f(1, -2, 3)"}));
}

TEST_F(VertexTest, EmitsItsTextureCoordinateFirst) {
    EXPECT_EQ(Draw(engine::Vertex(1, -2, 3, 0.25F, 0.75F)), Lines({
                                                                "glTexCoord2f(0.25, 0.75)",
                                                                "glVertex3f(1, -2, 3)",
                                                            }));
}

TEST_F(VertexTest, EmitsItsColourFirst) {
    engine::Vertex vertex(1, -2, 3);
    vertex.r = 0.125F;
    vertex.g = 0.25F;
    vertex.b = 0.5F;
    vertex.hasColour = true;
    EXPECT_EQ(Draw(vertex), Lines({
                                "glColor3f(0.125, 0.25, 0.5)",
                                "glVertex3f(1, -2, 3)",
                            }));
}

TEST_F(VertexTest, EmitsColourTextureCoordinateAndPositionInOrder) {
    engine::Vertex vertex(1, -2, 3, 0.25F, 0.75F);
    vertex.g = 1;
    vertex.hasColour = true;
    EXPECT_EQ(Draw(vertex), Lines({
                                "glColor3f(0, 1, 0)",
                                "glTexCoord2f(0.25, 0.75)",
                                "glVertex3f(1, -2, 3)",
                            }));
}

TEST_F(VertexTest, KeepsBackWhatItsFlagsForbid) {
    engine::Vertex vertex(1, -2, 3, 0.25F, 0.75F);
    vertex.r = vertex.g = vertex.b = 1;
    vertex.hasTexCoord = false;
    EXPECT_EQ(Draw(vertex), Lines({"glVertex3f(1, -2, 3)"}));
}

TEST_F(VertexTest, EmitsInfinityAsItIs) {
    constexpr float endless = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Draw(engine::Vertex(endless, 0, -endless)), Lines({"glVertex3f(inf, 0, -inf)"}));
}

} // namespace
