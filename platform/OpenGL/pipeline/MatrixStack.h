// The stack of one of OpenGL's matrix modes.
#pragma once

#include "Matrix.h"

#include <cstddef>
#include <vector>

namespace opengl {

class MatrixStack {
public:
    /// At most @p most (>= 1) matrices; at first the identity alone.
    explicit MatrixStack(std::size_t most) : mostMatrices(most) {}

    const Matrix& Top() const { return matrices.back(); }
    void Replace(const Matrix& matrix) { matrices.back() = matrix; }

    /// The new transform comes before the present one.
    void Multiply(const Matrix& matrix) { matrices.back() = matrices.back() * matrix; }

    /// False: the stack is full.
    bool Push() {
        if (matrices.size() == mostMatrices) {
            return false;
        }
        matrices.push_back(Matrix(matrices.back()));
        return true;
    }

    /// False: there is only one matrix.
    bool Pop() {
        if (matrices.size() == 1) {
            return false;
        }
        matrices.pop_back();
        return true;
    }

private:
    std::size_t mostMatrices;
    std::vector<Matrix> matrices = std::vector<Matrix>(1);
};

} // namespace opengl
