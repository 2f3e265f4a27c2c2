// The fixture of tests that load PNG files as OpenGL textures.
#pragma once

#include <GL/glpng.h>

#include "OffscreenContext.h"
#include "PngFile.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace gltest {

/// A real context, and a folder for files of one test.
class PngTextureFixture : public testing::Test {
protected:
    PngTextureFixture() {
        std::string pattern = testing::TempDir() + "PngTextureXXXXXX";
        folder = mkdtemp(pattern.data());
    }

    ~PngTextureFixture() override { std::filesystem::remove_all(folder); }

    std::string PathTo(const std::string& name) const { return folder + "/" + name; }

    std::string Store(const Bytes& bytes) const {
        std::string path = PathTo("picture.png");
        WriteFile(path, bytes);
        return path;
    }

    static unsigned int BindPath(const std::string& path, pngInfo* info = nullptr) {
        return pngBind(path.c_str(), PNG_NOMIPMAPS, PNG_ALPHA, info, GL_REPEAT, GL_LINEAR,
                       GL_LINEAR);
    }

    unsigned int Bind(const PngFile& file, pngInfo* info = nullptr) const {
        return BindPath(Store(Encode(file)), info);
    }

    OffscreenContext context{16, 16};

private:
    std::string folder;
};

inline GLint BoundTexture() {
    GLint name = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &name);
    return name;
}

inline GLint LevelParameter(GLenum parameter) {
    GLint value = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, parameter, &value);
    return value;
}

inline GLint Integer(GLenum parameter) {
    GLint value = 0;
    glGetIntegerv(parameter, &value);
    return value;
}

/// 7 by 5, neither side a power of two; all pixels differ.
inline PngFile SevenByFive() {
    PngFile file{.width = 7, .height = 5};
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            for (const int channel : {30 * x, 50 * y, 10 * x + 20 * y}) {
                file.rows.push_back(static_cast<unsigned char>(channel));
            }
        }
    }
    return file;
}

} // namespace gltest
