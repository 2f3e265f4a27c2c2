// A cuboid with a colour and the whole texture on each face, and a value that oscillates.
#pragma once

namespace engine {

/// Drawing needs a current OpenGL context, outside glBegin and glEnd.
class Box {
public:
    Box();

    /// Zeroes the red of colour rows 0 to 2 and nothing else.
    void CleanColour();

    /// Draws the box with its own extents and texture.
    void DrawBox();

    /// Draws the box with half-extents @p w, @p h, @p d, textured with @p tex if that is not 0.
    /// Leaves texturing enabled or disabled as it was, and colour row 1 current.
    void DrawSizedBox(float w, float h, float d, int tex);

    /// Moves `pulse` by @p step, up to 0.8 and down to 0.1 in turn, without clamping.
    void ChangeSize(float step);

    /// Takes colour row i from @p source[6 * i] on; reads up to @p source[32].
    void ChangeColor(float* source);

    float width; ///< half-extent along x; edges are twice as long
    float height;
    float depth;
    float pulse; ///< not used by the drawing
    /// Red, green, blue, 0..1. Row 0: back (-z); 2: left (-x); 3: top (+y); 4: right (+x);
    /// 5: bottom (-y) and front (+z). Row 1 colours no face.
    float colour[6][3];
    bool growing; ///< whether `pulse` rises
    int texture;  ///< GL texture name; 0: none
};

} // namespace engine
