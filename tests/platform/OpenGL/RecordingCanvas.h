// A canvas that keeps what it is to draw.
#pragma once

#include "Canvas.h"

#include <span>
#include <vector>

namespace gltest {

class RecordingCanvas : public opengl::Canvas {
public:
    struct Batch {
        opengl::DrawState state;
        std::vector<opengl::Vertex> vertices;
    };

    void Clear(const opengl::ClearValues& values) override { clears.push_back(values); }

    void Draw(const opengl::DrawState& state, std::span<const opengl::Vertex> vertices) override {
        batches.push_back({state, {vertices.begin(), vertices.end()}});
    }

    std::vector<opengl::ClearValues> clears;
    std::vector<Batch> batches;
};

} // namespace gltest
