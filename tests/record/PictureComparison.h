// Whether two pictures of the show, drawn by different OpenGL drivers, look the same.
#pragma once

#include <string>
#include <vector>

namespace recordtest {

struct Image {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> bytes; ///< red, green, blue; rows from the top down

    bool operator==(const Image&) const = default;
};

/// Both throw std::runtime_error.
Image ReadPng(const std::string& path);
void WritePng(const Image& image, const std::string& path);

struct Difference {
    double farPixels = 0;  ///< the share of pixels with a channel that differs by more than 3
    double blurred = 0;    ///< the largest difference of a channel's mean over 8 by 8 pixels
    std::string complaint; ///< empty: the same
};

/// Pictures of the same size match if at most 1 pixel of 200 is far, and if those few are edges
/// that moved by a pixel, not different content.
Difference Compare(const Image& expected, const Image& actual);

/// The two pictures and, below, their difference: black for none, white for 32 or more.
Image ShowDifference(const Image& expected, const Image& actual);

} // namespace recordtest
