// A texture so small that a test can say where each of its texels has to be seen.
#include "Texels.h"

#include <vector>

namespace gltest {

GLuint BindNewTexture(const Rgba (&texels)[4]) {
    std::vector<unsigned char> bytes;
    bytes.reserve(12);
    for (const Rgba& texel : texels) {
        for (const int channel : {texel.red, texel.green, texel.blue}) {
            bytes.push_back(static_cast<unsigned char>(channel));
        }
    }
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, 2, 2, 0, GL_RGB, GL_UNSIGNED_BYTE, bytes.data());
    return name;
}

} // namespace gltest
