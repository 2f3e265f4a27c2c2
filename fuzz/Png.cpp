// Any bytes as a picture: pngBind uploads it whole or refuses it.
#include "Expect.h"
#include "MemoryFile.h"

#include <GL/gl.h>
#include <GL/glpng.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

// Larger than any whose pixels are to be taken, so that those that are not are met.
constexpr GLint maxSide = 16384;
constexpr GLuint textureName = 7;
constexpr std::size_t maxPixelBytes = std::size_t{256} << 20;

GLsizei uploadedWidth = 0;
GLsizei uploadedHeight = 0;
GLenum uploadedFormat = 0;
std::uint32_t checksum = 0;

// libpng is not watched by the fuzzer. So that pictures of all kinds are kept and changed further,
// each depth, format and size taken counts as something new: libFuzzer reads this section.
[[gnu::section("__libfuzzer_extra_counters"),
  gnu::used]] std::array<std::uint8_t, std::size_t{32} * 16 * 16> kindsTaken;

std::size_t Magnitude(GLsizei side) {
    return std::bit_width(static_cast<unsigned int>(side)) % 16;
}

} // namespace

extern "C" {

void glGenTextures(GLsizei count, GLuint* names) {
    EXPECT(count == 1);
    *names = textureName;
}

void glBindTexture(GLenum, GLuint) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glPushClientAttrib(GLbitfield) {}
void glPopClientAttrib() {}
void glPixelStorei(GLenum, GLint) {}

void glGetIntegerv(GLenum, GLint* value) {
    *value = maxSide;
}

void glGetTexLevelParameteriv(GLenum, GLint, GLenum, GLint* value) {
    *value = uploadedWidth;
}

// Looks at every byte, as a driver does: what is missing is found by the sanitizer.
void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    EXPECT(width > 0 && width <= maxSide && height > 0 && height <= maxSide);
    EXPECT(format == GL_RGB || format == GL_RGBA);
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                              (format == GL_RGBA ? 4U : 3U);
    EXPECT(bytes <= maxPixelBytes);
    const auto* first = static_cast<const std::uint8_t*>(pixels);
    std::for_each(first, first + bytes, [](std::uint8_t byte) { checksum = 31 * checksum + byte; });
    uploadedWidth = width;
    uploadedHeight = height;
    uploadedFormat = format;
}
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    uploadedWidth = 0;
    uploadedHeight = 0;
    uploadedFormat = 0;
    const fuzz::MemoryFile file(bytes, size);
    pngInfo info = {};
    const unsigned int name =
        pngBind(file.Path(), PNG_NOMIPMAPS, PNG_ALPHA, &info, GL_REPEAT, GL_LINEAR, GL_LINEAR);
    EXPECT(name == (uploadedWidth > 0 ? textureName : 0));
    EXPECT(info.Width == static_cast<unsigned int>(uploadedWidth));
    EXPECT(info.Height == static_cast<unsigned int>(uploadedHeight));
    EXPECT(info.Alpha == (uploadedFormat == GL_RGBA ? 8 : 0));
    EXPECT(name != 0 ? std::has_single_bit(info.Depth) && info.Depth <= 16 : info.Depth == 0);
    if (name != 0) {
        const std::size_t kind = (info.Alpha == 0 ? 0U : 16U) + info.Depth % 16;
        kindsTaken[(kind * 16 + Magnitude(uploadedWidth)) * 16 + Magnitude(uploadedHeight)] = 1;
    }
    return 0;
}
