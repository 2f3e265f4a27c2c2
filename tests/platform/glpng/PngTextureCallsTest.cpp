// The order in which a texture is made and filled, recorded in place of OpenGL.
#include <GL/glpng.h>

#include "PngFile.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

Calls calls;

template <typename... Arguments>
void Record(const char* name, Arguments... arguments) {
    std::ostringstream text;
    text << name << std::hex;
    ((text << ' ' << arguments), ...);
    calls.push_back(text.str());
}

} // namespace

void glGenTextures(GLsizei count, GLuint* names) {
    Record("glGenTextures", count);
    *names = 7;
}

void glBindTexture(GLenum target, GLuint name) {
    Record("glBindTexture", target, name);
}

void glTexParameteri(GLenum target, GLenum parameter, GLint value) {
    Record("glTexParameteri", target, parameter, value);
}

void glGetIntegerv(GLenum, GLint* value) {
    *value = 64;
}

void glPushClientAttrib(GLbitfield) {}

void glPopClientAttrib() {}

void glPixelStorei(GLenum, GLint) {}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void*) {
    Record("glTexImage2D", target, level, internalFormat, width, height, border, format, type);
}

namespace {

GLint uploadedWidth = 0;

class PngTextureCalls : public testing::Test {
protected:
    PngTextureCalls() {
        calls.clear();
        gltest::WriteFile(path, gltest::Encode({.width = 3, .rows = gltest::Bytes(9)}));
    }

    ~PngTextureCalls() override { std::filesystem::remove(path); }

    unsigned int Bind(const std::string& file) const {
        return pngBind(file.c_str(), PNG_NOMIPMAPS, PNG_ALPHA, nullptr, GL_REPEAT, GL_LINEAR,
                       GL_NEAREST);
    }

    const std::string path = testing::TempDir() + "PngTextureCalls." +
                             testing::UnitTest::GetInstance()->current_test_info()->name() + ".png";
};

// 0xde1: GL_TEXTURE_2D; 0x2802, 0x2803: wrap S, T; 0x2800, 0x2801: mag, min;
// 0x2901: GL_REPEAT; 0x2600, 0x2601: GL_NEAREST, GL_LINEAR.
const Calls made = {"glGenTextures 1",
                    "glBindTexture de1 7",
                    "glTexParameteri de1 2802 2901",
                    "glTexParameteri de1 2803 2901",
                    "glTexParameteri de1 2800 2600",
                    "glTexParameteri de1 2801 2601"};

} // namespace

void glGetTexLevelParameteriv(GLenum, GLint, GLenum, GLint* value) {
    *value = uploadedWidth;
}

TEST_F(PngTextureCalls, MakeTheTextureThenSetItUpThenUpload) {
    uploadedWidth = 3;

    EXPECT_EQ(Bind(path), 7U);

    Calls expected = made;
    expected.push_back("glTexImage2D de1 0 8051 3 1 0 1907 1401"); // GL_RGB8, GL_RGB, bytes
    EXPECT_EQ(calls, expected);
}

TEST_F(PngTextureCalls, NeitherUploadNorFreeWhenTheFileIsMissing) {
    EXPECT_EQ(Bind(path + ".missing"), 0U);

    EXPECT_EQ(calls, made);
}

TEST_F(PngTextureCalls, AnswerZeroWhenOpenGLTookNoImage) {
    uploadedWidth = 0; // as when its memory ran out

    EXPECT_EQ(Bind(path), 0U);
}
