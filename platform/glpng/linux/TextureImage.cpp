// Decodes the file and uploads its pixels.
#include "TextureImage.h"

#include "PngImage.h"

#include <GL/gl.h>
#include <GL/glpng.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

namespace glpng {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, FileCloser>;

// Non-blocking, so that a named pipe without a writer is refused instead of blocking.
File OpenRegularFile(const char* filename) {
    const int descriptor = open(filename, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0) {
        return nullptr;
    }
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        if (std::FILE* file = fdopen(descriptor, "rb")) {
            return File(file);
        }
    }
    close(descriptor);
    return nullptr;
}

bool DecodeFile(const char* filename, PngImage& image) {
    const File file = filename != nullptr ? OpenRegularFile(filename) : nullptr;
    if (file == nullptr) {
        return false;
    }
    GLint maxSide = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSide);
    return maxSide > 0 && DecodePng(file.get(), static_cast<unsigned int>(maxSide), image);
}

void Upload(const PngImage& image) {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, image.hasAlpha ? GL_RGBA8 : GL_RGB8,
                 static_cast<GLsizei>(image.width), static_cast<GLsizei>(image.height), 0,
                 image.hasAlpha ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE, image.pixels.get());
    glPopClientAttrib();
}

// Queries the texture, because glGetError would clear the caller's errors.
bool HasImage() {
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    return width > 0;
}

} // namespace

bool SetTextureImage(const char* filename, pngInfo& info) {
    PngImage image;
    if (!DecodeFile(filename, image)) {
        return false;
    }
    Upload(image);
    info = {image.width, image.height, image.depth, image.hasAlpha ? 8U : 0U};
    return HasImage();
}

} // namespace glpng
