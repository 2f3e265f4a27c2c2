// Small calculations with numbers: angles, quadratic equations, series.
#pragma once

#include <cstdint>

double DegToRad(double degrees);
double RadToDeg(double radians);

/// The result of ABCEquation.
struct ABCSolution {
    std::int32_t count; ///< 1 when the roots were computed, else 0; never 2
    float x1;
    float x2;
};

/// "Roots" of a x^2 + b x + c = 0, in single precision. The discriminant only decides whether
/// there are any; its root does not enter them: x1 is -b / a and x2 is -b / 2a. All zero where the
/// discriminant is 0 or negative. Nothing else is checked: a discriminant that is NaN counts as
/// positive, and roots may come out infinite (with @p a 0) or NaN.
ABCSolution ABCEquation(float a, float b, float c);

/// The sum of an arithmetic series of @p n terms from @p first to @p last.
double ArithmeticSum(double first, double last, double n);
