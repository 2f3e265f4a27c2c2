// PNG files that are refused: the texture made for them stays a name without an image.
#include "PngTextureFixture.h"

#include <GL/gl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <string_view>

using gltest::Bytes;
using gltest::Encode;
using gltest::Integer;
using gltest::LevelParameter;
using gltest::SevenByFive;

namespace {

class RefusedPng : public gltest::PngTextureFixture {};

// A file of one pixel whose header says otherwise.
Bytes OnePixelClaiming(unsigned int width, unsigned int height) {
    return gltest::WithClaimedSize(Encode({.colourType = PNG_COLOR_TYPE_GRAY, .rows = {0x80}}),
                                   width, height);
}

// What pngBind @p answers and leaves after a failure: a name that is made, bound, and without an
// image.
void ExpectOnlyAName(unsigned int answer = 0) {
    EXPECT_EQ(answer, 0U);
    EXPECT_NE(gltest::BoundTexture(), 0);
    EXPECT_TRUE(glIsTexture(static_cast<GLuint>(gltest::BoundTexture())));
    EXPECT_EQ(LevelParameter(GL_TEXTURE_WIDTH), 0);
    EXPECT_EQ(LevelParameter(GL_TEXTURE_HEIGHT), 0);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

} // namespace

TEST_F(RefusedPng, IsOnlyANameWhereNoFileIsFound) {
    ExpectOnlyAName(BindPath(PathTo("missing.png")));
    ExpectOnlyAName(BindPath(""));
    ExpectOnlyAName(BindPath(PathTo(""))); // a folder
    ExpectOnlyAName(
        pngBind(nullptr, PNG_NOMIPMAPS, PNG_ALPHA, nullptr, GL_REPEAT, GL_LINEAR, GL_LINEAR));
}

TEST_F(RefusedPng, IsOnlyANameForAFileThatIsNoPng) {
    ExpectOnlyAName(BindPath(Store({})));
    ExpectOnlyAName(BindPath(Store({'G', 'I', 'F', '8', '9', 'a', 1, 0, 1, 0, 0, 0, 0, ';'})));
}

TEST_F(RefusedPng, IsOnlyANameWhenTheHeaderClaimsAnotherSize) {
    ExpectOnlyAName(BindPath(Store(OnePixelClaiming(2, 2)))); // the picture's data end early
    ExpectOnlyAName(BindPath(Store(OnePixelClaiming(0x7FFFFFFF, 0x7FFFFFFF))));
    ExpectOnlyAName(BindPath(Store(OnePixelClaiming(0, 1))));
    ExpectOnlyAName(BindPath(Store(OnePixelClaiming(1, 0))));
}

TEST_F(RefusedPng, IsOnlyANameForANamedPipeThatNobodyWrites) {
    ASSERT_EQ(mkfifo(PathTo("pipe.png").c_str(), 0600), 0);

    ExpectOnlyAName(BindPath(PathTo("pipe.png")));
}

TEST_F(RefusedPng, IsOnlyANameForANamedPipeEvenWithAPngFileInIt) {
    ASSERT_EQ(mkfifo(PathTo("pipe.png").c_str(), 0600), 0);
    std::fstream pipe(PathTo("pipe.png"), std::ios::in | std::ios::out | std::ios::binary);
    const Bytes bytes = Encode(SevenByFive());
    pipe.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(pipe.flush());

    ExpectOnlyAName(BindPath(PathTo("pipe.png")));
}

TEST_F(RefusedPng, IsOnlyANameWhereverTheFileIsCutShort) {
    const Bytes whole = Encode(SevenByFive());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        ASSERT_EQ(BindPath(Store(cut)), 0U) << size << " of " << whole.size() << " bytes";
    }
    ExpectOnlyAName();
}

TEST_F(RefusedPng, IsOnlyANameWhereverABitIsWrong) {
    // Bit 5 of a byte in a chunk's name makes that chunk one that readers may leave out.
    const Bytes whole = Encode(SevenByFive());
    for (std::size_t i = 0; i < whole.size(); ++i) {
        Bytes wrong = whole;
        wrong[i] ^= 0x01;
        ASSERT_EQ(BindPath(Store(wrong)), 0U) << "byte " << i;
    }
    ExpectOnlyAName();
}

TEST_F(RefusedPng, IsOnlyANameWhereverABitOfItsTransparencyIsWrong) {
    const Bytes whole = Encode({.colourType = PNG_COLOR_TYPE_PALETTE,
                                .rows = {1},
                                .palette = {{1, 2, 3}, {40, 50, 60}},
                                .paletteAlpha = {0, 128}});
    constexpr std::string_view name = "tRNS";
    const auto found = std::search(whole.begin(), whole.end(), name.begin(), name.end());
    const auto begin = static_cast<std::size_t>(found - whole.begin());
    constexpr std::size_t length = 4;
    constexpr std::size_t dataAndChecksum = 2 + 4;
    ASSERT_LT(begin + name.size() + dataAndChecksum, whole.size());
    for (std::size_t i = begin - length; i < begin + name.size() + dataAndChecksum; ++i) {
        if (i >= begin && i < begin + name.size()) {
            continue; // by another name it is another chunk, which may be left out
        }
        Bytes wrong = whole;
        wrong[i] ^= 0x01;
        ASSERT_EQ(BindPath(Store(wrong)), 0U) << "byte " << i;
    }
    ExpectOnlyAName();
}

TEST_F(RefusedPng, MayBeAsWideAsOpenGLAllows) {
    const auto widest = static_cast<unsigned int>(Integer(GL_MAX_TEXTURE_SIZE));
    EXPECT_NE(Bind({.width = widest, .colourType = PNG_COLOR_TYPE_GRAY, .rows = Bytes(widest)}),
              0U);
    EXPECT_EQ(LevelParameter(GL_TEXTURE_WIDTH), static_cast<GLint>(widest));
}

TEST_F(RefusedPng, IsOnlyANameWhenWiderOrHigherThanOpenGLAllows) {
    const unsigned int size = static_cast<unsigned int>(Integer(GL_MAX_TEXTURE_SIZE)) + 1;
    ExpectOnlyAName(Bind({.width = size, .colourType = PNG_COLOR_TYPE_GRAY, .rows = Bytes(size)}));
    ExpectOnlyAName(Bind({.height = size, .colourType = PNG_COLOR_TYPE_GRAY, .rows = Bytes(size)}));
}

TEST_F(RefusedPng, LeavesTheInfoAloneWhenTheFileIsRefused) {
    pngInfo info = {1, 2, 3, 4};

    BindPath(PathTo("missing.png"), &info);

    EXPECT_EQ(info.Width, 1U);
    EXPECT_EQ(info.Height, 2U);
    EXPECT_EQ(info.Depth, 3U);
    EXPECT_EQ(info.Alpha, 4U);
}
