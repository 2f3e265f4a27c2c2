// Text in the stroke font: its characters and the matrix it leaves.
#include "Text.h"

#include "Effects.h"
#include "Fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

class TextTest : public doubles::Fixture {
protected:
    static std::string Output(float x, float y, std::string text) {
        return EffectsOf([&] { engine::OutputText(x, y, text.data()); });
    }
};

TEST_F(TextTest, DrawsEachCharacterThenMovesBackTooFar) {
    EXPECT_EQ(Output(5, -7, "Hi!"),
              Lines({
                  "glPushMatrix()", "glTranslatef(5, -7, 0)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 72)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 105)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 33)", "glPopMatrix()",
                  "glTranslatef(-5, 7, 0)", // meant, after the pop
              }));
}

TEST_F(TextTest, TwoTextsMoveTwice) {
    const std::string effects = EffectsOf([] {
        char text[] = "";
        engine::OutputText(5, 0, text);
        engine::OutputText(5, 0, text);
    });
    EXPECT_EQ(effects, Lines({
                           "glPushMatrix()", "glTranslatef(5, 0, 0)", "glPopMatrix()",
                           "glTranslatef(-5, -0, 0)", // stays
                           "glPushMatrix()", "glTranslatef(5, 0, 0)", "glPopMatrix()",
                           "glTranslatef(-5, -0, 0)", // -10 in all
                       }));
}

TEST_F(TextTest, EndsAtTheFirstZero) {
    EXPECT_EQ(doubles::Only("glut", Output(0, 0, std::string("a\0b", 3))),
              Lines({"glutStrokeCharacter(GLUT_STROKE_ROMAN, 97)"}));
}

TEST_F(TextTest, BytesAbove127AreNegativeCodes) {
    EXPECT_EQ(doubles::Only("glut", Output(0, 0, "\x7F\x80\xBF\xFF")),
              Lines({
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 127)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, -128)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, -65)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, -1)",
              }));
}

TEST_F(TextTest, PassesLineBreaksOnToo) {
    EXPECT_EQ(doubles::Only("glut", Output(0, 0, "\n\t ")),
              Lines({
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 10)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 9)",
                  "glutStrokeCharacter(GLUT_STROKE_ROMAN, 32)",
              }));
}

TEST_F(TextTest, LeavesTheTextAsItIs) {
    char text[] = "abc";
    engine::OutputText(1, 2, text);
    EXPECT_EQ(std::string(text, sizeof text), std::string("abc\0", 4));
}

} // namespace
