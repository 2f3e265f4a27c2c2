// A canvas element of the page, drawn on by WebGL.
#pragma once

#include "Canvas.h"

namespace opengl {

/// While the element has no WebGL context, or has lost it, nothing is drawn.
class WebCanvas : public Canvas {
public:
    void Clear(const ClearValues& values) override;
    void Draw(const DrawState& state, std::span<const Vertex> vertices) override;
};

} // namespace opengl
