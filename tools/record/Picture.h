// One frame of the show.
#pragma once

#include <cstddef>
#include <vector>

namespace record {

struct Picture {
    Picture(int pixelsWide, int pixelsHigh)
        : width(pixelsWide), height(pixelsHigh),
          pixels(std::size_t{4} * static_cast<std::size_t>(pixelsWide) *
                 static_cast<std::size_t>(pixelsHigh)) {}

    int width;
    int height;
    std::vector<unsigned char> pixels; ///< red, green, blue, unused; bottom row first
};

} // namespace record
