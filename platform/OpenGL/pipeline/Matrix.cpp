#include "Matrix.h"

#include <cmath>
#include <numbers>

namespace opengl {

static constexpr double radiansPerDegree = std::numbers::pi / 180;

static Vector3 Cross(const Vector3& a, const Vector3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

float Dot(const Vector3& a, const Vector3& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector3 Difference(const Vector3& a, const Vector3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vector3 Normalized(const Vector3& vector) {
    const float length = std::sqrt(Dot(vector, vector));
    if (length == 0.0F) {
        return vector;
    }
    return {vector[0] / length, vector[1] / length, vector[2] / length};
}

float Matrix::At(std::size_t row, std::size_t column) const {
    return values[4 * column + row];
}

Vector4 Matrix::operator*(const Vector4& vector) const {
    Vector4 product = {};
    for (std::size_t row = 0; row < 4; ++row) {
        product[row] = values[row] * vector[0] + values[4 + row] * vector[1] +
                       values[8 + row] * vector[2] + values[12 + row] * vector[3];
    }
    return product;
}

Matrix Matrix::operator*(const Matrix& right) const {
    Matrix product;
    for (std::size_t column = 0; column < 16; column += 4) {
        const Vector4 transformed =
            *this * Vector4{right.values[column], right.values[column + 1],
                            right.values[column + 2], right.values[column + 3]};
        for (std::size_t row = 0; row < 4; ++row) {
            product.values[column + row] = transformed[row];
        }
    }
    return product;
}

Matrix Translation(float x, float y, float z) {
    return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}};
}

Matrix Scaling(float x, float y, float z) {
    return {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1}};
}

Matrix Rotation(float degrees, float x, float y, float z) {
    if (x == 0.0F && y == 0.0F && z == 0.0F) {
        return {};
    }
    const double radians = static_cast<double>(degrees) * radiansPerDegree;
    const auto sine = static_cast<float>(std::sin(radians));
    const auto cosine = static_cast<float>(std::cos(radians));
    const Vector3 axis = Normalized({x, y, z});
    Matrix rotation;
    for (std::size_t column = 0; column < 3; ++column) {
        Vector3 unit = {};
        unit[column] = 1;
        const Vector3 turned = Cross(axis, unit);
        for (std::size_t row = 0; row < 3; ++row) {
            // An axis of the coordinate system stays as it is, exactly.
            const float along = axis[row] * axis[column];
            rotation.values[4 * column + row] =
                along + (unit[row] - along) * cosine + turned[row] * sine;
        }
    }
    return rotation;
}

Matrix Perspective(double fieldOfViewDegrees, double aspect, double near, double far) {
    const double halfAngle = fieldOfViewDegrees / 2 * radiansPerDegree;
    const double depth = far - near;
    if (depth == 0 || std::sin(halfAngle) == 0 || aspect == 0) {
        return {}; // no volume to see: GLU leaves the matrix alone
    }
    const double cotangent = std::cos(halfAngle) / std::sin(halfAngle);
    Matrix perspective;
    perspective.values[0] = static_cast<float>(cotangent / aspect);
    perspective.values[5] = static_cast<float>(cotangent);
    perspective.values[10] = static_cast<float>(-(far + near) / depth);
    perspective.values[11] = -1;
    perspective.values[14] = static_cast<float>(-2 * near * far / depth);
    perspective.values[15] = 0;
    return perspective;
}

static Vector3 Rounded(const std::array<double, 3>& vector) {
    return {static_cast<float>(vector[0]), static_cast<float>(vector[1]),
            static_cast<float>(vector[2])};
}

Matrix View(const std::array<double, 3>& eye, const std::array<double, 3>& center,
            const std::array<double, 3>& up) {
    const Vector3 forward =
        Normalized(Rounded({center[0] - eye[0], center[1] - eye[1], center[2] - eye[2]}));
    const Vector3 side = Normalized(Cross(forward, Rounded(up)));
    const Vector3 upright = Cross(side, forward);
    const Matrix turn = {{side[0], upright[0], -forward[0], 0, side[1], upright[1], -forward[1], 0,
                          side[2], upright[2], -forward[2], 0, 0, 0, 0, 1}};
    const Vector3 place = Rounded(eye);
    return turn * Translation(-place[0], -place[1], -place[2]);
}

NormalTransform::NormalTransform(const Matrix& matrix) {
    const auto column = [&matrix](std::size_t index) {
        return Vector3{matrix.At(0, index), matrix.At(1, index), matrix.At(2, index)};
    };
    // The cofactors are the inverse's transpose, but for the determinant.
    const std::array<Vector3, 3> cofactors = {
        Cross(column(1), column(2)), Cross(column(2), column(0)), Cross(column(0), column(1))};
    const float determinant = Dot(column(0), cofactors[0]);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t i = 0; i < 3; ++i) {
            rows[row][i] = determinant == 0.0F ? 0.0F : cofactors[i][row] / determinant;
        }
    }
}

Vector3 NormalTransform::operator*(const Vector3& normal) const {
    return {Dot(rows[0], normal), Dot(rows[1], normal), Dot(rows[2], normal)};
}

} // namespace opengl
