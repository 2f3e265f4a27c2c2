// A canvas element of the page, drawn on by WebGL.
#pragma once

#include "Canvas.h"

#include <cstddef>
#include <vector>

namespace opengl {

/// Keeps what is drawn until it is shown: what is cleared before that costs no drawing. While the
/// element has no WebGL context, or has lost it, nothing is shown.
class WebCanvas : public Canvas {
public:
    void Clear(const ClearValues& values) override;
    void Draw(const DrawState& state, std::span<const Vertex> vertices) override;
    void Show();

private:
    struct Step {
        ClearValues clear; // if there are no vertices
        DrawState state;
        std::size_t vertices;
    };

    std::vector<Step> steps;
    std::vector<Vertex> allVertices; // of all steps, one after the other
};

} // namespace opengl
