// 4 by 4 matrices and the vectors that they transform, as OpenGL has them.
#pragma once

#include <array>
#include <cstddef>

namespace opengl {

using Vector3 = std::array<float, 3>;
using Vector4 = std::array<float, 4>;

float Dot(const Vector3& a, const Vector3& b);
Vector3 Difference(const Vector3& a, const Vector3& b);

/// At length 1; zero stays zero.
Vector3 Normalized(const Vector3& vector);

/// Its columns one after another.
struct Matrix {
    std::array<float, 16> values = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    float At(std::size_t row, std::size_t column) const;

    /// The transformed vector.
    Vector4 operator*(const Vector4& vector) const;

    /// The transform by @p right and then by this.
    Matrix operator*(const Matrix& right) const;

    bool operator==(const Matrix&) const = default;
};

Matrix Translation(float x, float y, float z);
Matrix Scaling(float x, float y, float z);

/// About (@p x, @p y, @p z), of any length, by @p degrees; about zero: no rotation.
Matrix Rotation(float degrees, float x, float y, float z);

/// gluPerspective's.
Matrix Perspective(double fieldOfViewDegrees, double aspect, double near, double far);

/// gluLookAt's.
Matrix View(const std::array<double, 3>& eye, const std::array<double, 3>& center,
            const std::array<double, 3>& up);

/// How a matrix transforms normals: the inverse of its upper left 3 by 3, transposed.
class NormalTransform {
public:
    NormalTransform() = default;

    /// Of a @p matrix that has no inverse: all normals become zero.
    explicit NormalTransform(const Matrix& matrix);

    Vector3 operator*(const Vector3& normal) const;

private:
    std::array<Vector3, 3> rows = {Vector3{1, 0, 0}, Vector3{0, 1, 0}, Vector3{0, 0, 1}};
};

} // namespace opengl
