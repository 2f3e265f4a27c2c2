#include "Lines.h"

#include "Primitives.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace opengl {

namespace {

struct Place {
    float x, y; ///< pixels from the viewport's lower left corner
};

Place OnScreen(const Vertex& vertex, const Widths& widths) {
    const Vector4& p = vertex.position;
    return {(p[0] / p[3] + 1) / 2 * widths.viewportWidth,
            (p[1] / p[3] + 1) / 2 * widths.viewportHeight};
}

/// As deep as it was.
Vertex MovedTo(Vertex vertex, const Place& place, const Widths& widths) {
    Vector4& p = vertex.position;
    p[0] = (place.x / widths.viewportWidth * 2 - 1) * p[3];
    p[1] = (place.y / widths.viewportHeight * 2 - 1) * p[3];
    return vertex;
}

template <std::size_t count>
std::array<float, count> Between(const std::array<float, count>& a,
                                 const std::array<float, count>& b, float part) {
    std::array<float, count> between = {};
    for (std::size_t i = 0; i < count; ++i) {
        between[i] = a[i] + (b[i] - a[i]) * part;
    }
    return between;
}

Vertex Between(const Vertex& a, const Vertex& b, float part) {
    return {Between(a.position, b.position, part), Between(a.colour, b.colour, part),
            Between(a.texture, b.texture, part)};
}

/// Cuts off what is nearer than the near plane or farther than the far one. False: nothing is left.
bool ClipByDepth(Vertex& from, Vertex& to) {
    for (const float side : {1.0F, -1.0F}) {
        const float fromInside = from.position[3] + side * from.position[2];
        const float toInside = to.position[3] + side * to.position[2];
        if (fromInside < 0 && toInside < 0) {
            return false;
        }
        if (fromInside < 0) {
            from = Between(from, to, fromInside / (fromInside - toInside));
        } else if (toInside < 0) {
            to = Between(to, from, toInside / (toInside - fromInside));
        }
    }
    return from.position[3] > 0 && to.position[3] > 0;
}

float CentreOfPixel(float x) {
    return std::floor(x) + 0.5F;
}

bool IsInDiamond(const Place& place) {
    return std::abs(place.x - CentreOfPixel(place.x)) + std::abs(place.y - CentreOfPixel(place.y)) <
           0.5F;
}

constexpr float nudge = 1.0F / 32; // pixels: beyond what graphics cards round away

/// A line covers the pixels whose diamond, of half a pixel each way, it leaves: the one in whose
/// diamond it starts, but not the one in which it ends. The quad is to begin before the centre of
/// the first, and to end before that of the last. @p back is a pixel back along the line.
Place Bounded(const Place& end, const Place& back, bool isXMajor) {
    if (!IsInDiamond(end)) {
        return end;
    }
    const float distance = isXMajor ? (CentreOfPixel(end.x) - end.x) / back.x
                                    : (CentreOfPixel(end.y) - end.y) / back.y;
    const float wanted = distance + nudge;
    return {end.x + back.x * wanted, end.y + back.y * wanted};
}

void AppendQuad(const std::array<Vertex, 4>& corners, std::vector<Vertex>& triangles) {
    triangles.insert(triangles.end(), {corners[0], corners[1], corners[3], //
                                       corners[1], corners[2], corners[3]});
}

} // namespace

void AppendLine(const Vertex& from, const Vertex& to, const Widths& widths,
                std::vector<Vertex>& triangles) {
    Vertex first = from;
    Vertex last = to;
    if (!ClipByDepth(first, last)) {
        return;
    }
    Place start = OnScreen(first, widths);
    Place end = OnScreen(last, widths);
    const float right = end.x - start.x;
    const float up = end.y - start.y;
    const float length = std::max(std::abs(right), std::abs(up)); // pixels covered along the line
    if (length == 0.0F) {
        return;
    }
    const bool isXMajor = std::abs(right) >= std::abs(up);
    const Place back = {-right / length, -up / length};
    start = Bounded(start, back, isXMajor);
    end = Bounded(end, back, isXMajor);
    // Widened along the other axis, not across the line.
    const float half = std::max(std::round(widths.line), 1.0F) / 2;
    const Place across = isXMajor ? Place{0, half} : Place{half, 0};
    const auto corner = [&](const Vertex& vertex, const Place& place, float side) {
        return MovedTo(vertex, {place.x + side * across.x, place.y + side * across.y}, widths);
    };
    AppendQuad({corner(first, start, -1), corner(last, end, -1), corner(last, end, 1),
                corner(first, start, 1)},
               triangles);
}

void AppendPoint(const Vertex& vertex, const Widths& widths, std::vector<Vertex>& triangles) {
    const Vector4& p = vertex.position;
    if (p[3] <= 0 || std::abs(p[0]) > p[3] || std::abs(p[1]) > p[3] || std::abs(p[2]) > p[3]) {
        return; // a point is in sight or not by its centre
    }
    const float size = std::max(std::round(widths.point), 1.0F);
    const Place place = OnScreen(vertex, widths);
    // From the pixels' edges, so that the square covers whole pixels.
    const float left = std::floor(place.x - (size - 1) / 2);
    const float bottom = std::floor(place.y - (size - 1) / 2);
    AppendQuad({MovedTo(vertex, {left, bottom}, widths),
                MovedTo(vertex, {left + size, bottom}, widths),
                MovedTo(vertex, {left + size, bottom + size}, widths),
                MovedTo(vertex, {left, bottom + size}, widths)},
               triangles);
}

} // namespace opengl
