// Stroke text as it is seen, and where it leaves the matrix.
#include "GlutWindow.h"
#include "Text.h"

#include <array>
#include <string>

using gltest::Picture;

namespace {

class TextPicture : public gltest::GlutWindow {
protected:
    // Whether anything is drawn from @p left to @p right, in model units from the middle.
    static bool HasInk(const Picture& picture, int left, int right) {
        for (int x = left; x < right; ++x) {
            for (int y = -200; y < 200; ++y) {
                if (gltest::At(picture, x, y).red != 0) {
                    return true;
                }
            }
        }
        return false;
    }

    static void Write(float x, float y, std::string text) {
        glColor3f(1, 1, 1);
        engine::OutputText(x, y, text.data());
    }

    // How far the model-view matrix moves things.
    static std::array<float, 3> Shift() {
        std::array<float, 16> matrix = {};
        glGetFloatv(GL_MODELVIEW_MATRIX, matrix.data());
        return {matrix[12], matrix[13], matrix[14]};
    }
};

} // namespace

TEST_F(TextPicture, StandsWhereItIsToldAtTheFontsOwnSize) {
    Write(-100, 0, "MM");

    const Picture picture = Drawn();
    EXPECT_FALSE(HasInk(picture, -250, -100));
    EXPECT_TRUE(HasInk(picture, -100, 0));
    EXPECT_TRUE(HasInk(picture, 0, 105));
    EXPECT_FALSE(HasInk(picture, 120, 250));
}

TEST_F(TextPicture, SecondCallIsDrawnWhereTheFirstLeftTheMatrix) {
    Write(150, 0, "I");
    Write(150, 0, "I");

    const Picture picture = Drawn();
    EXPECT_TRUE(HasInk(picture, 150, 200));
    EXPECT_TRUE(HasInk(picture, 0, 50)); // 150 units to the left of the first
    EXPECT_FALSE(HasInk(picture, 50, 150));
}

TEST_F(TextPicture, TwoCallsMoveTheMatrixTwiceAsFar) {
    Write(5, 0, "Skovra");
    Write(5, 0, "Skovra");

    EXPECT_EQ(Shift(), (std::array<float, 3>{-10, 0, 0}));
}

TEST_F(TextPicture, EmptyTextDrawsNothingButMovesTheMatrix) {
    Write(30, 40, "");

    EXPECT_EQ(Shift(), (std::array<float, 3>{-30, -40, 0}));
    EXPECT_FALSE(HasInk(Drawn(), -256, 256));
}
