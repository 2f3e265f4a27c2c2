// What the show is drawn on: OpenGL without a window and without a display.
#pragma once

namespace record {

struct Picture;

/// A fixed-function OpenGL context and its buffer, current in the thread that makes it and alive
/// as long as the process. Software draws, unless LIBGL_ALWAYS_SOFTWARE says otherwise.
class Canvas {
public:
    /// Sizes in pixels. Throws std::runtime_error where there is no such canvas.
    Canvas(int width, int height);

    /// Whether what is drawn next is to become pixels. What does not costs little.
    void Use(bool drawn) const;

    /// What is drawn on it; @p picture has its size.
    void Read(Picture& picture) const;
};

} // namespace record
