// Vectors: their arithmetic, what it makes of zero, infinity and NaN, and their drawing.
#include "Vector.h"

#include "Effects.h"
#include "Fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <ostream>
#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class VectorTest : public doubles::Fixture {};

/// The fields that every vector has a value in; a NaN is equal to a NaN.
struct Fields {
    double x;
    double y;
    double z;
    double w;
};

bool IsSame(double one, double other) {
    return one == other || (std::isnan(one) && std::isnan(other));
}

bool operator==(const Fields& one, const Fields& other) {
    return IsSame(one.x, other.x) && IsSame(one.y, other.y) && IsSame(one.z, other.z) &&
           IsSame(one.w, other.w);
}

std::ostream& operator<<(std::ostream& stream, const Fields& fields) {
    return stream << fields.x << ", " << fields.y << ", " << fields.z << ", " << fields.w;
}

Fields Of(const Vector& vector) {
    return {vector.x, vector.y, vector.z, vector.w};
}

Fields Numbers(double x, double y, double z, double w) {
    return {x, y, z, w};
}

TEST_F(VectorTest, IsMadeOfZeros) {
    const Vector vector;
    EXPECT_EQ(Of(vector), Numbers(0, 0, 0, 0));
    EXPECT_EQ(vector.spare, 0);
}

TEST_F(VectorTest, IsMadeOfFourNumbers) {
    EXPECT_EQ(Of(Vector(1.5, -2, 3, 4)), Numbers(1.5, -2, 3, 4));
}

TEST_F(VectorTest, HasItsFieldsInOrder) {
    const Vector vector;
    EXPECT_TRUE(doubles::AreInOrder({&vector.x, &vector.y, &vector.z, &vector.w, &vector.spare}));
}

TEST_F(VectorTest, SetOverwritesTheFourAndLeavesTheSpare) {
    Vector vector;
    vector.spare = 9;
    vector.Set(1, 2, 3, 4);
    EXPECT_EQ(Of(vector), Numbers(1, 2, 3, 4));
    EXPECT_EQ(vector.spare, 9);
}

TEST_F(VectorTest, CopyHasAllFiveFields) {
    Vector vector;
    vector.Set(1, 2, 3, 4);
    vector.spare = 5;
    const Vector copy = vector;
    EXPECT_EQ(Of(copy), Numbers(1, 2, 3, 4));
    EXPECT_EQ(copy.spare, 5);
}

// Length

TEST_F(VectorTest, LengthLeavesOutW) {
    EXPECT_EQ(Vector(3, 4, 0, 7).GetLength(), 5);
    EXPECT_EQ(Vector(-2, 3, -6, nan).GetLength(), 7);
}

TEST_F(VectorTest, LengthAddsTheSquaresFromXToZ) {
    // 1e16 + 1 is 1e16 once more, 1e16 + 2 is not.
    EXPECT_EQ(Vector(1e8, 1, 1, 0).GetLength(), 1e8);
    EXPECT_EQ(Vector(1, 1e8, 1, 0).GetLength(), 1e8);
    EXPECT_EQ(Vector(1, 1, 1e8, 0).GetLength(), std::nextafter(1e8, infinity));
}

TEST_F(VectorTest, LengthOverflowsAndUnderflowsWithItsSquares) {
    EXPECT_EQ(Vector(1e200, 0, 0, 0).GetLength(), infinity);
    EXPECT_EQ(Vector(0, 1e-200, 0, 0).GetLength(), 0);
}

TEST_F(VectorTest, LengthOfInfinityAndOfNoNumber) {
    EXPECT_EQ(Vector(0, -infinity, 0, 0).GetLength(), infinity);
    EXPECT_TRUE(std::isnan(Vector(0, 0, nan, 0).GetLength()));
    EXPECT_TRUE(std::isnan(Vector(infinity, nan, 0, 0).GetLength()));
}

// Angle

double Angle(Vector a, Vector b) {
    return Vector::GetAngle(a, b);
}

TEST_F(VectorTest, AngleIsInRadiansAndLeavesOutW) {
    EXPECT_EQ(Angle({1, 0, 0, 5}, {0, 1, 0, 7}), std::numbers::pi / 2);
    EXPECT_EQ(Angle({1, 0, 0, 0}, {1, 0, 0, 0}), 0);
    EXPECT_EQ(Angle({0, 0, 2, 0}, {0, 0, -3, 0}), std::numbers::pi);
    EXPECT_DOUBLE_EQ(Angle({2, 0, 0, 0}, {3, 0, 3, 0}), std::numbers::pi / 4);
}

TEST_F(VectorTest, AngleIsNotKeptWithinItsRange) {
    // The length of (1, 1, 1), squared, is rounded to less than 3: the cosine to more than 1.
    EXPECT_TRUE(std::isnan(Angle({1, 1, 1, 0}, {1, 1, 1, 0})));
}

TEST_F(VectorTest, AngleWithAZeroVectorIsNoNumber) {
    EXPECT_TRUE(std::isnan(Angle({0, 0, 0, 0}, {1, 0, 0, 0})));
    EXPECT_TRUE(std::isnan(Angle({1, 0, 0, 0}, {0, 0, 0, 0})));
    EXPECT_TRUE(std::isnan(Angle({0, 0, 0, 0}, {0, 0, 0, 0})));
}

TEST_F(VectorTest, AngleOfInfinityOrNoNumberIsNoNumber) {
    EXPECT_TRUE(std::isnan(Angle({infinity, 0, 0, 0}, {1, 0, 0, 0})));
    EXPECT_TRUE(std::isnan(Angle({1, nan, 0, 0}, {1, 0, 0, 0})));
}

// Normals

TEST_F(VectorTest, NormalizeDividesInPlaceAndKeepsW) {
    Vector vector(3, -4, 12, 7);
    Vector& result = vector.Normalize();
    EXPECT_EQ(&result, &vector);
    EXPECT_EQ(Of(vector), Numbers(3.0 / 13, -4.0 / 13, 12.0 / 13, 7));
}

TEST_F(VectorTest, NormalizeDividesAllByTheLengthAsItWas) {
    Vector vector(49, 49, 0, 0);
    const double length = vector.GetLength();
    vector.Normalize();
    EXPECT_EQ(Of(vector), Numbers(49 / length, 49 / length, 0, 0));
}

TEST_F(VectorTest, NormalizeDividesInsteadOfMultiplying) {
    Vector vector(49, 0, 0, 0); // 49 * (1 / 49) is less than 1
    EXPECT_EQ(vector.GetNormalized().x, 1);
    EXPECT_EQ(vector.Normalize().x, 1);
}

TEST_F(VectorTest, GetNormalizedIsANewVectorWithoutW) {
    Vector vector(3, -4, 12, 7);
    EXPECT_EQ(Of(vector.GetNormalized()), Numbers(3.0 / 13, -4.0 / 13, 12.0 / 13, 0));
    EXPECT_EQ(Of(vector), Numbers(3, -4, 12, 7));
}

TEST_F(VectorTest, ZeroAndInfiniteAndTinyVectorsAreNormalizedToWhatTheDivisionGives) {
    Vector zero(0, 0, 0, 7);
    EXPECT_EQ(Of(zero.GetNormalized()), Numbers(nan, nan, nan, 0));
    EXPECT_EQ(Of(zero.Normalize()), Numbers(nan, nan, nan, 7));
    Vector infinite(1, infinity, -2, 7);
    EXPECT_EQ(Of(infinite.GetNormalized()), Numbers(0, nan, 0, 0));
    EXPECT_EQ(Of(infinite.Normalize()), Numbers(0, nan, 0, 7));
    Vector tiny(1e-200, 0, -1e-200, 0); // its squares vanish
    EXPECT_EQ(Of(tiny.GetNormalized()), Numbers(infinity, nan, -infinity, 0));
}

TEST_F(VectorTest, NormalIsZeroWhateverTheVector) {
    for (Vector vector : {Vector(1, 2, 3, 4), Vector(), Vector(nan, infinity, 0, nan)}) {
        const Vector normal = vector.Normal();
        EXPECT_EQ(Of(normal), Numbers(0, 0, 0, 0));
        EXPECT_EQ(normal.spare, 0);
    }
}

// Operators

TEST_F(VectorTest, TimesAVectorIsTheDotProductWithoutW) {
    Vector a(1, 2, 3, 100);
    Vector b(10, -20, 40, 100);
    EXPECT_EQ(a * b, 10 - 40 + 120);
}

TEST_F(VectorTest, DotProductAddsFromXToZ) {
    Vector ones(1, 1, 1, 0);
    Vector xLarge(1e16, 1, 1, 0);
    Vector zLarge(1, 1, 1e16, 0);
    EXPECT_EQ(xLarge * ones, 1e16);
    EXPECT_EQ(zLarge * ones, 1e16 + 2);
}

TEST_F(VectorTest, DotProductOfInfinityAndZeroIsNoNumber) {
    Vector a(infinity, 1, 0, 0);
    Vector b(0, 1, 0, 0);
    EXPECT_TRUE(std::isnan(a * b));
    EXPECT_EQ(a * a, infinity);
}

TEST_F(VectorTest, TimesANumberScalesWithoutW) {
    Vector vector(1, -2, 3, 4);
    EXPECT_EQ(Of(vector * 2.5), Numbers(2.5, -5, 7.5, 0));
    EXPECT_EQ(Of(vector), Numbers(1, -2, 3, 4));
}

TEST_F(VectorTest, TimesInfinityOrNoNumber) {
    Vector vector(1, -2, 0, 4);
    EXPECT_EQ(Of(vector * infinity), Numbers(infinity, -infinity, nan, 0));
    EXPECT_EQ(Of(vector * nan), Numbers(nan, nan, nan, 0));
}

TEST_F(VectorTest, DividedByANumberWithoutW) {
    Vector vector(49, -98, 24.5, 4); // 49 * (1 / 49) is less than 1
    EXPECT_EQ(Of(vector / 49), Numbers(1, -2, 0.5, 0));
    EXPECT_EQ(Of(vector), Numbers(49, -98, 24.5, 4));
}

TEST_F(VectorTest, DividedByZeroOrInfinity) {
    Vector vector(1, -2, 0, 4);
    EXPECT_EQ(Of(vector / 0.0), Numbers(infinity, -infinity, nan, 0));
    EXPECT_EQ(Of(vector / -0.0), Numbers(-infinity, infinity, nan, 0));
    EXPECT_EQ(Of(vector / infinity), Numbers(0, 0, 0, 0));
    EXPECT_TRUE(std::signbit((vector / infinity).y));
}

TEST_F(VectorTest, SumHasNoW) {
    Vector a(1, 2, 3, 1);
    Vector b(10, -20, 0.5, 1);
    EXPECT_EQ(Of(a + b), Numbers(11, -18, 3.5, 0));
    EXPECT_EQ(Of(a), Numbers(1, 2, 3, 1));
    EXPECT_EQ(Of(b), Numbers(10, -20, 0.5, 1));
}

TEST_F(VectorTest, DifferenceHasNoW) {
    Vector a(1, 2, 3, 5);
    Vector b(10, -20, 0.5, 1);
    EXPECT_EQ(Of(a - b), Numbers(-9, 22, 2.5, 0));
    EXPECT_EQ(Of(a), Numbers(1, 2, 3, 5));
    EXPECT_EQ(Of(b), Numbers(10, -20, 0.5, 1));
}

TEST_F(VectorTest, SumAndDifferenceOfInfinities) {
    Vector a(infinity, infinity, nan, 0);
    Vector b(-infinity, infinity, 1, 0);
    EXPECT_EQ(Of(a + b), Numbers(nan, infinity, nan, 0));
    EXPECT_EQ(Of(a - b), Numbers(infinity, nan, nan, 0));
}

TEST_F(VectorTest, NegativeHasNoW) {
    Vector vector(1, -2, 0, 5);
    const Vector negative = -vector;
    EXPECT_EQ(Of(negative), Numbers(-1, 2, 0, 0));
    EXPECT_TRUE(std::signbit(negative.z));
    EXPECT_FALSE(std::signbit(negative.w));
}

TEST_F(VectorTest, AddingInPlaceKeepsTheLeftW) {
    Vector a(1, 2, 3, 5);
    Vector b(10, -20, 0.5, 7);
    Vector& result = a += b;
    EXPECT_EQ(&result, &a);
    EXPECT_EQ(Of(a), Numbers(11, -18, 3.5, 5));
    EXPECT_EQ(Of(b), Numbers(10, -20, 0.5, 7));
}

TEST_F(VectorTest, AddedToItselfIsTwiceItself) {
    Vector vector(1, 2, 3, 5);
    vector += vector;
    EXPECT_EQ(Of(vector), Numbers(2, 4, 6, 5));
}

// Drawing

TEST_F(VectorTest, DrawsALineFromTheOriginAndNothingElse) {
    EXPECT_EQ(EffectsOf([] { Vector(1, -2, 0.5, 9).Draw(3); }), Lines({
                                                                    "glBegin(GL_LINES)",
                                                                    "glVertex3f(0, 0, 0)",
                                                                    "glVertex3f(3, -6, 1.5)",
                                                                    "glEnd()",
                                                                }));
}

TEST_F(VectorTest, DrawMultipliesInDoubleThenNarrows) {
    const std::string effects = EffectsOf([] { Vector(0x1p500, 1.0 / 3, 0, 0).Draw(0x1p-500); });
    EXPECT_EQ(doubles::Only("glVertex3f(1", effects), Lines({"glVertex3f(1, 0, 0)"}));
}

TEST_F(VectorTest, DrawsWhatIsTooLongAsInfinite) {
    EXPECT_EQ(EffectsOf([] { Vector(infinity, -infinity, 1, 0).Draw(1); }),
              Lines({
                  "glBegin(GL_LINES)",
                  "glVertex3f(0, 0, 0)",
                  "glVertex3f(inf, -inf, 1)",
                  "glEnd()",
              }));
}

} // namespace
