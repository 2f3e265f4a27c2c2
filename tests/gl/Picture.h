// A drawn picture, which tests compare with the expected one.
#pragma once

#include <gtest/gtest.h>

#include <iosfwd>
#include <vector>

namespace gltest {

/// A colour of 8 bits a channel.
struct Rgba {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 255;

    bool operator==(const Rgba&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Rgba& colour);

namespace colours {

inline constexpr Rgba black = {0, 0, 0};
inline constexpr Rgba red = {255, 0, 0};
inline constexpr Rgba green = {0, 255, 0};
inline constexpr Rgba blue = {0, 0, 255};
inline constexpr Rgba white = {255, 255, 255};

} // namespace colours

/// Pixels from the top left, x to the right, y down.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> bytes; ///< RGBA, rows from the top down

    Rgba At(int x, int y) const;
    bool operator==(const Picture&) const = default;
};

/// Reads the lower left @p width by @p height pixels of what is drawn in the current context.
Picture ReadDrawn(int width, int height);

/// Reads level 0 of the texture bound to GL_TEXTURE_2D, its row 0 as the picture's top.
Picture ReadTexture();

/// Whether the pixel's channels, except alpha, differ from @p expected by at most @p tolerance. If
/// not, the picture is saved in the working directory and named in the result.
testing::AssertionResult PixelIs(const Picture& picture, int x, int y, const Rgba& expected,
                                 int tolerance = 1);

} // namespace gltest
