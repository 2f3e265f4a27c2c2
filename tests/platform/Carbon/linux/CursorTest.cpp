// The cursor's calls of GLUT, which are defined here.
#include <Carbon/Carbon.h>

#include <GL/freeglut.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

int currentWindow = 0;
std::vector<int> cursorsSet;

} // namespace

extern "C" {

int glutGetWindow() {
    return currentWindow;
}

void glutSetCursor(int cursor) {
    cursorsSet.push_back(cursor);
}
}

namespace {

class Cursor : public testing::Test {
protected:
    Cursor() {
        currentWindow = 0;
        cursorsSet.clear();
    }
};

TEST_F(Cursor, IsHiddenOnTheCurrentWindow) {
    currentWindow = 1;
    EXPECT_EQ(HideCursor(), noErr);
    EXPECT_EQ(cursorsSet, std::vector<int>{GLUT_CURSOR_NONE});
}

TEST_F(Cursor, IsShownAsTheDesktopHasIt) {
    currentWindow = 1;
    EXPECT_EQ(ShowCursor(), noErr);
    EXPECT_EQ(cursorsSet, std::vector<int>{GLUT_CURSOR_INHERIT});
}

TEST_F(Cursor, IsLeftAloneWithoutAWindow) {
    EXPECT_EQ(HideCursor(), noErr);
    EXPECT_EQ(ShowCursor(), noErr);
    EXPECT_EQ(cursorsSet, std::vector<int>{});
}

} // namespace
