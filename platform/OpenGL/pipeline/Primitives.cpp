#include "Primitives.h"

#include "Lines.h"

#include <cstddef>

namespace opengl {

namespace {

class Assembly {
public:
    Assembly(std::span<const Vertex> from, std::vector<Vertex>& to) : vertices(from), out(to) {}

    void Triangle(std::size_t a, std::size_t b, std::size_t c) {
        out.insert(out.end(), {vertices[a], vertices[b], vertices[c]});
    }

    /// Its vertices in the order of its edge.
    void Quad(std::size_t a, std::size_t b, std::size_t c, std::size_t d) {
        Triangle(a, b, d);
        Triangle(b, c, d);
    }

    void Triangles() {
        for (std::size_t i = 2; i < vertices.size(); i += 3) {
            Triangle(i - 2, i - 1, i);
        }
    }

    void Strip() {
        for (std::size_t i = 2; i < vertices.size(); ++i) {
            const std::size_t odd = i % 2;
            Triangle(i - 2 + odd, i - 1 - odd, i);
        }
    }

    void Fan() {
        for (std::size_t i = 2; i < vertices.size(); ++i) {
            Triangle(0, i - 1, i);
        }
    }

    void Quads() {
        for (std::size_t i = 3; i < vertices.size(); i += 4) {
            Quad(i - 3, i - 2, i - 1, i);
        }
    }

    void QuadStrip() {
        for (std::size_t i = 3; i < vertices.size(); i += 2) {
            Quad(i - 1, i - 3, i - 2, i);
        }
    }

    /// Of every second vertex, or of each.
    void Lines(std::size_t step, const Widths& widths) {
        for (std::size_t i = 1; i < vertices.size(); i += step) {
            AppendLine(vertices[i - 1], vertices[i], widths, out);
        }
    }

    void Loop(const Widths& widths) {
        Lines(1, widths);
        if (vertices.size() > 1) {
            AppendLine(vertices.back(), vertices.front(), widths, out);
        }
    }

    void Points(const Widths& widths) {
        for (const Vertex& vertex : vertices) {
            AppendPoint(vertex, widths, out);
        }
    }

private:
    std::span<const Vertex> vertices;
    std::vector<Vertex>& out;
};

} // namespace

void AppendTriangles(GLenum mode, std::span<const Vertex> vertices, const Widths& widths,
                     std::vector<Vertex>& triangles) {
    Assembly assembly(vertices, triangles);
    switch (mode) {
    case GL_POINTS:
        return assembly.Points(widths);
    case GL_LINES:
        return assembly.Lines(2, widths);
    case GL_LINE_STRIP:
        return assembly.Lines(1, widths);
    case GL_LINE_LOOP:
        return assembly.Loop(widths);
    case GL_TRIANGLES:
        return assembly.Triangles();
    case GL_TRIANGLE_STRIP:
        return assembly.Strip();
    case GL_QUADS:
        return assembly.Quads();
    case GL_QUAD_STRIP:
        return assembly.QuadStrip();
    default: // GL_TRIANGLE_FAN, GL_POLYGON
        return assembly.Fan();
    }
}

} // namespace opengl
