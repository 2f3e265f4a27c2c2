// What the show is drawn on, instead of a window.
#pragma once

#include "OffscreenContext.h"

namespace record {

struct Picture;

class Canvas {
public:
    /// Sizes in pixels. Throws std::runtime_error where there is no such canvas.
    Canvas(int width, int height);

    /// Whether what is drawn next is to become pixels. What does not costs little.
    void Use(bool drawn) const;

    /// What is drawn on it; @p picture has its size.
    void Read(Picture& picture) const;

private:
    OffscreenContext context;
};

} // namespace record
