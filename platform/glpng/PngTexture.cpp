// Loads PNG files as OpenGL textures: texture creation.
#include <GL/glpng.h>

#include "TextureImage.h"

#include <GL/gl.h>

unsigned int pngBind(const char* filename, int /*mipmap*/, int /*transparency*/, pngInfo* info,
                     int wrapMode, int minFilter, int magFilter) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrapMode);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrapMode);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, magFilter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minFilter);

    pngInfo found = {};
    if (!glpng::SetTextureImage(filename, found)) {
        return 0; // the texture stays bound, without an image: callers rely on it
    }
    if (info != nullptr) {
        *info = found;
    }
    return texture;
}
