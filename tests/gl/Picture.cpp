// What was drawn, as a picture that tests compare with what they expect.
#include "Picture.h"

#include "PngFile.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <ostream>
#include <stdexcept>
#include <string>

namespace gltest {

namespace {

std::string Keep(const Picture& picture) {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    std::string path = std::string(test->test_suite_name()) + "." + test->name() + ".png";
    WriteFile(path, Encode({.width = static_cast<unsigned int>(picture.width),
                            .height = static_cast<unsigned int>(picture.height),
                            .colourType = PNG_COLOR_TYPE_RGB_ALPHA,
                            .rows = picture.bytes}));
    return path;
}

bool IsNear(const Rgba& one, const Rgba& other, int tolerance) {
    return std::abs(one.red - other.red) <= tolerance &&
           std::abs(one.green - other.green) <= tolerance &&
           std::abs(one.blue - other.blue) <= tolerance;
}

Picture MakePicture(int width, int height) {
    const auto size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<unsigned char>(4 * size)};
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Rgba& colour) {
    return stream << '(' << colour.red << ", " << colour.green << ", " << colour.blue << ", "
                  << colour.alpha << ')';
}

Rgba Picture::At(int x, int y) const {
    if (x < 0 || x >= width || y < 0 || y >= height) {
        throw std::out_of_range("no such pixel");
    }
    const unsigned char* pixel = bytes.data() + 4 * (std::ptrdiff_t{y} * width + x);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Picture ReadDrawn(int width, int height) {
    Picture picture = MakePicture(width, height);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, picture.bytes.data());
    glPopClientAttrib();
    // OpenGL's first row is the lowest.
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{4} * width;
    for (int y = 0; y < height / 2; ++y) {
        const auto upper = picture.bytes.begin() + y * rowBytes;
        const auto lower = picture.bytes.begin() + (height - 1 - y) * rowBytes;
        std::swap_ranges(upper, upper + rowBytes, lower);
    }
    return picture;
}

Picture ReadTexture() {
    GLint width = 0;
    GLint height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    Picture picture = MakePicture(width, height);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, picture.bytes.data());
    glPopClientAttrib();
    return picture;
}

testing::AssertionResult PixelIs(const Picture& picture, int x, int y, const Rgba& expected,
                                 int tolerance) {
    const Rgba colour = picture.At(x, y);
    if (IsNear(colour, expected, tolerance)) {
        return testing::AssertionSuccess() << "pixel " << x << ", " << y << " is " << colour;
    }
    return testing::AssertionFailure()
           << "pixel " << x << ", " << y << " is " << colour << ", not " << expected << " within "
           << tolerance << "; the picture is in " << Keep(picture);
}

} // namespace gltest
