// Lines and points as quads.
#pragma once

#include "Canvas.h"

#include <vector>

namespace opengl {

struct Widths;

/// Appends the two triangles that cover the pixels of the line, or none where it is not in sight.
void AppendLine(const Vertex& from, const Vertex& to, const Widths& widths,
                std::vector<Vertex>& triangles);

/// Appends the two triangles of a square about @p vertex, or none where it is not in sight.
void AppendPoint(const Vertex& vertex, const Widths& widths, std::vector<Vertex>& triangles);

} // namespace opengl
