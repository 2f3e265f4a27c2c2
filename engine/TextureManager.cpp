#include "TextureManager.h"

#include <GL/gl.h>

namespace engine {

unsigned int TextureManager::LoadPNG(std::string name) {
    const std::string path = GetFileFromBundle(name, "png");
    return pngBind(path.c_str(), PNG_NOMIPMAPS, PNG_ALPHA, &info, GL_REPEAT, GL_LINEAR, GL_LINEAR);
}

void TextureManager::LoadTexture(std::string file, std::string type, std::string key) {
    unsigned int texture = 0;
    if (type == "png") {
        texture = LoadPNG(file);
    }
    textures[key] = static_cast<int>(texture);
}

void TextureManager::GetTexture(std::string key) {
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(textures[key])); // stores 0 for an unknown key
}

} // namespace engine
