// A point with an optional texture coordinate and colour of its own.
#pragma once

namespace engine {

class Vertex {
public:
    /// Everything 0, without texture coordinate and colour.
    Vertex();
    Vertex(float newX, float newY, float newZ);
    /// With a texture coordinate. A colour is set in the fields, together with `hasColour`.
    Vertex(float newX, float newY, float newZ, float newS, float newT);

    /// Emits the point; between glBegin and glEnd.
    void DrawVertex();

    float x;
    float y;
    float z;
    float s;
    float t;
    float r; ///< red, green, blue, 0..1
    float g;
    float b;
    bool hasTexCoord; ///< whether DrawVertex emits s and t
    bool hasColour;   ///< whether DrawVertex emits r, g and b
};

} // namespace engine
