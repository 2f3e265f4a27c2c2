#include "Vector.h"

#include <GL/gl.h>

#include <cmath>

Vector::Vector() : x(0), y(0), z(0), w(0), spare(0) {}

Vector::Vector(double newX, double newY, double newZ, double newW)
    : x(newX), y(newY), z(newZ), w(newW) {}

void Vector::Set(double newX, double newY, double newZ, double newW) {
    x = newX;
    y = newY;
    z = newZ;
    w = newW;
}

void Vector::Draw(double scale) {
    glBegin(GL_LINES);
    glVertex3f(0, 0, 0);
    glVertex3f(static_cast<float>(x * scale), static_cast<float>(y * scale),
               static_cast<float>(z * scale));
    glEnd();
}

double Vector::GetLength() {
    return std::sqrt(x * x + y * y + z * z);
}

double Vector::GetAngle(Vector& a, Vector& b) {
    return std::acos((a * b) / (a.GetLength() * b.GetLength()));
}

Vector& Vector::Normalize() {
    const double length = GetLength();
    x /= length;
    y /= length;
    z /= length;
    return *this;
}

Vector Vector::GetNormalized() {
    const double length = GetLength();
    return {x / length, y / length, z / length, 0};
}

Vector Vector::Normal() {
    return {}; // the zero vector, on purpose
}

double operator*(Vector& a, Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector operator*(Vector& v, double d) {
    return {v.x * d, v.y * d, v.z * d, 0};
}

Vector operator/(Vector& v, double d) {
    return {v.x / d, v.y / d, v.z / d, 0};
}

Vector operator+(Vector& a, Vector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z, 0};
}

Vector operator-(Vector& a, Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z, 0};
}

Vector operator-(Vector& a) {
    return {-a.x, -a.y, -a.z, 0};
}

Vector& operator+=(Vector& a, Vector& b) {
    a.x += b.x;
    a.y += b.y;
    a.z += b.z;
    return a;
}
