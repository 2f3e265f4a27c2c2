// Angles, quadratic equations, series.
#include "Scalar.h"

#include "Fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <ostream>
#include <type_traits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr float infinityF = std::numeric_limits<float>::infinity();
constexpr float nanF = std::numeric_limits<float>::quiet_NaN();

/// A solution to compare: a NaN is equal to a NaN, and 0 to -0.
struct Solution {
    std::int32_t count;
    float x1;
    float x2;
};

bool IsSame(float one, float other) {
    return one == other || (std::isnan(one) && std::isnan(other));
}

bool operator==(const Solution& one, const Solution& other) {
    return one.count == other.count && IsSame(one.x1, other.x1) && IsSame(one.x2, other.x2);
}

std::ostream& operator<<(std::ostream& stream, const Solution& solution) {
    return stream << solution.count << ": " << solution.x1 << ", " << solution.x2;
}

Solution Solve(float a, float b, float c) {
    const ABCSolution solution = ABCEquation(a, b, c);
    return {solution.count, solution.x1, solution.x2};
}

Solution Roots(float x1, float x2) {
    return {1, x1, x2};
}

Solution NoRoots() {
    return {0, 0.0F, 0.0F};
}

// Angles

TEST(Scalar, DegreesBecomeRadians) {
    EXPECT_EQ(DegToRad(180), std::numbers::pi);
    EXPECT_EQ(DegToRad(1), 0.017453292519943295);
    EXPECT_EQ(DegToRad(-90), -std::numbers::pi / 2);
    EXPECT_EQ(DegToRad(0), 0);
}

TEST(Scalar, RadiansBecomeDegrees) {
    EXPECT_EQ(RadToDeg(1), 57.29577951308232);
    EXPECT_EQ(RadToDeg(-2), -114.59155902616465);
    EXPECT_DOUBLE_EQ(RadToDeg(std::numbers::pi), 180);
}

TEST(Scalar, AnglesGoBackAndForth) {
    for (int step = -100; step <= 100; ++step) {
        const double degrees = step * 7.25;
        EXPECT_DOUBLE_EQ(RadToDeg(DegToRad(degrees)), degrees);
    }
}

TEST(Scalar, AnglesMayBeInfiniteOrNoNumber) {
    EXPECT_EQ(DegToRad(-infinity), -infinity);
    EXPECT_EQ(RadToDeg(infinity), infinity);
    EXPECT_EQ(RadToDeg(1e308), infinity);
    EXPECT_TRUE(std::isnan(DegToRad(nan)));
    EXPECT_TRUE(std::isnan(RadToDeg(nan)));
}

// Quadratic equations

TEST(Scalar, SolutionHasItsFieldsInOrder) {
    const ABCSolution solution = {};
    EXPECT_TRUE(doubles::AreInOrder({&solution.count, &solution.x1, &solution.x2}));
    EXPECT_TRUE((std::is_same_v<decltype(solution.count), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(solution.x1), float>));
    EXPECT_TRUE((std::is_same_v<decltype(solution.x2), float>));
}

TEST(Scalar, QuadraticRootsLeaveOutTheRootOfTheDiscriminant) {
    EXPECT_EQ(Solve(1, -3, 2), Roots(3, 1.5F)); // D = 1
    EXPECT_EQ(Solve(2, -10, 1), Roots(5, 2.5F));
    EXPECT_EQ(Solve(-2, -10, 1), Roots(-5, -2.5F));
    EXPECT_EQ(Solve(1, 6, 5), Roots(-6, -3));
}

TEST(Scalar, QuadraticWithoutAPositiveDiscriminantHasNoRoots) {
    EXPECT_EQ(Solve(1, 2, 1), NoRoots());
    EXPECT_EQ(Solve(1, 0, 0), NoRoots());
    EXPECT_EQ(Solve(0, 0, 0), NoRoots());
    EXPECT_EQ(Solve(1, 0, 1), NoRoots()); // D < 0, as in the next
    EXPECT_EQ(Solve(-1, 3, -100), NoRoots());
}

TEST(Scalar, QuadraticHasRootsFromTheLeastPositiveDiscriminantOn) {
    EXPECT_EQ(Solve(0, 0x1p-74F, 0), Roots(-infinityF, -infinityF)); // D = 2^-148
    EXPECT_EQ(Solve(0, 0x1p-75F, 0), NoRoots());                     // D = 2^-150, rounded to 0
}

TEST(Scalar, QuadraticWithoutBHasRootsOfMinusZero) {
    const ABCSolution solution = ABCEquation(1, 0, -1);
    EXPECT_EQ(solution.count, 1);
    EXPECT_EQ(solution.x1, 0.0F);
    EXPECT_EQ(solution.x2, 0.0F);
    EXPECT_TRUE(std::signbit(solution.x1));
    EXPECT_TRUE(std::signbit(solution.x2));
}

TEST(Scalar, DiscriminantIsRoundedToSinglePrecision) {
    // b * b is 16785409 and 4 * a * c one less: in double precision D would be 1.
    EXPECT_EQ(Solve(1, 4097, 4196352), NoRoots());
}

TEST(Scalar, DiscriminantOverflowsInSinglePrecision) {
    // Infinity less infinity is no number, which is not <= 0; in double precision D would be
    // -3e40, and there would be no roots.
    EXPECT_EQ(Solve(1e20F, 1e20F, 1e20F), Roots(-1, -0.5F));
}

TEST(Scalar, RootsOverflowInSinglePrecision) {
    EXPECT_EQ(Solve(1, 2e38F, 0), Roots(-infinityF, -2e38F / 2)); // x1 would be -2e38 in double
    EXPECT_EQ(Solve(2e38F, 1e38F, -1), Roots(0, 0));              // -0.5 and -0.25 in double
}

TEST(Scalar, DiscriminantMultipliesAByMinus4First) {
    // -4e38 is too large for single precision, and times 0 no number; the other orders give D = 0.
    EXPECT_EQ(Solve(1e38F, 0, 0), Roots(0, 0));
    EXPECT_EQ(Solve(0, 0, 1e38F), NoRoots());
}

TEST(Scalar, QuadraticWithoutADividesByZero) {
    EXPECT_EQ(Solve(0, 2, 1), Roots(-infinityF, -infinityF));
    EXPECT_EQ(Solve(0, -2, 1), Roots(infinityF, infinityF));
    EXPECT_EQ(Solve(-0.0F, 2, 1), Roots(infinityF, infinityF));
    EXPECT_EQ(Solve(0, 0, infinityF), Roots(nanF, nanF)); // D is no number
}

TEST(Scalar, QuadraticOfNoNumbersHasTheRootsThatAAndBGive) {
    EXPECT_EQ(Solve(nanF, -3, 2), Roots(nanF, nanF));
    EXPECT_EQ(Solve(1, nanF, 2), Roots(nanF, nanF));
    EXPECT_EQ(Solve(nanF, nanF, nanF), Roots(nanF, nanF));
    EXPECT_EQ(Solve(1, -3, nanF), Roots(3, 1.5F)); // those of a and b
}

TEST(Scalar, QuadraticOfInfinities) {
    EXPECT_EQ(Solve(1, infinityF, 1), Roots(-infinityF, -infinityF));
    EXPECT_EQ(Solve(1, 1, -infinityF), Roots(-1, -0.5F));
    EXPECT_EQ(Solve(1, 1, infinityF), NoRoots());
    EXPECT_EQ(Solve(infinityF, 1, -1), Roots(0, 0));
    EXPECT_EQ(Solve(infinityF, 1, 1), NoRoots());
    EXPECT_EQ(Solve(infinityF, infinityF, 1), Roots(nanF, nanF));
}

// Series

TEST(Scalar, SeriesIsSummed) {
    EXPECT_EQ(ArithmeticSum(1, 100, 100), 5050);
    EXPECT_EQ(ArithmeticSum(-3, 5, 5), 5);
    EXPECT_EQ(ArithmeticSum(2, 3, 1.5), 3.75);
    EXPECT_EQ(ArithmeticSum(7, 9, 0), 0);
    EXPECT_EQ(ArithmeticSum(7, 9, -1), -8);
}

TEST(Scalar, SeriesIsHalvedLast) {
    EXPECT_EQ(ArithmeticSum(1e308, 0, 2), infinity);
    EXPECT_EQ(ArithmeticSum(1e308, 1e308, 0.25), infinity);
}

TEST(Scalar, SeriesOfInfinitiesOrNoNumbers) {
    EXPECT_TRUE(std::isnan(ArithmeticSum(-infinity, infinity, 2)));
    EXPECT_TRUE(std::isnan(ArithmeticSum(1, infinity, 0)));
    EXPECT_TRUE(std::isnan(ArithmeticSum(nan, 1, 1)));
    EXPECT_EQ(ArithmeticSum(1, 2, -infinity), -infinity);
}

} // namespace
