// Vectors in space, in double precision, with their arithmetic.
#pragma once

/// A direction. The arithmetic uses x, y and z; `w` is only carried along. Nothing is checked: a
/// vector of length 0 has no direction, and operations that need one give NaN.
class Vector {
public:
    /// All zero.
    Vector();

    /// `spare` is not initialised.
    Vector(double newX, double newY, double newZ, double newW);

    void Set(double newX, double newY, double newZ, double newW);

    /// Draws a line from the origin to the vector times @p scale, in the current colour. Needs a
    /// current OpenGL context, outside glBegin and glEnd.
    void Draw(double scale);

    double GetLength();

    /// Radians, 0..pi.
    static double GetAngle(Vector& a, Vector& b);

    /// Makes the length 1 and keeps `w`; returns *this.
    Vector& Normalize();

    /// The same direction with length 1 and `w` 0.
    Vector GetNormalized();

    /// Always all zero; it computes no perpendicular.
    Vector Normal();

    double x;
    double y;
    double z;
    double w;
    double spare; ///< not used
};

/// The dot product.
double operator*(Vector& a, Vector& b);

// The results have `w` 0.
Vector operator*(Vector& v, double d);
Vector operator/(Vector& v, double d);
Vector operator+(Vector& a, Vector& b);
Vector operator-(Vector& a, Vector& b);
Vector operator-(Vector& a);

/// Keeps the `w` of @p a.
Vector& operator+=(Vector& a, Vector& b);
