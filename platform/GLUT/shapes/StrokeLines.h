// The letters of GLUT_STROKE_ROMAN, in lines.
#pragma once

#include <span>

namespace glut {

struct StrokePoint {
    float x, y;
};

struct StrokeCharacter {
    int firstLine;
    int lineCount;
    float advance; ///< to the next letter
    bool exists;
};

/// By their codes. Made at build time.
extern const std::span<const StrokeCharacter> strokeCharacters;

/// The points of line @p number from one end to the other.
std::span<const StrokePoint> StrokeLine(int number);

} // namespace glut
