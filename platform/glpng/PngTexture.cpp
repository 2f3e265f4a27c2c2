// Loads PNG files as OpenGL textures: texture creation and upload.
#include <GL/glpng.h>

#include "PngImage.h"

#include <GL/gl.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

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

bool DecodeFile(const char* filename, glpng::PngImage& image) {
    const File file = filename != nullptr ? OpenRegularFile(filename) : nullptr;
    if (file == nullptr) {
        return false;
    }
    GLint maxSide = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSide);
    return maxSide > 0 && glpng::DecodePng(file.get(), static_cast<unsigned int>(maxSide), image);
}

void Upload(const glpng::PngImage& image) {
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

unsigned int pngBind(const char* filename, int /*mipmap*/, int /*transparency*/, pngInfo* info,
                     int wrapMode, int minFilter, int magFilter) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrapMode);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrapMode);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, magFilter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minFilter);

    glpng::PngImage image;
    if (!DecodeFile(filename, image)) {
        return 0; // the texture stays bound, without an image: callers rely on it
    }
    Upload(image);
    if (!HasImage()) {
        return 0;
    }
    if (info != nullptr) {
        *info = {image.width, image.height, image.depth, image.hasAlpha ? 8U : 0U};
    }
    return texture;
}
