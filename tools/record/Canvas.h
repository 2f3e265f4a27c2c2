// The off-screen buffer on which the show is drawn, instead of a window.
#pragma once

#include "OffscreenContext.h"

namespace record {

struct Picture;

class Canvas {
public:
    /// Sizes in pixels. Throws std::runtime_error if no such buffer can be made.
    Canvas(int width, int height);

    /// Whether what is drawn next is rasterised. If not, drawing costs little.
    void Use(bool drawn) const;

    /// Reads what was drawn into @p picture, which has its size.
    void Read(Picture& picture) const;

private:
    OffscreenContext context;
};

} // namespace record
