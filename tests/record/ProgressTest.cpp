// What is said while a recording goes on.
#include "Progress.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using record::Progress;

namespace {

/// A clock that the test sets, and what is written.
class ProgressText : public testing::Test {
protected:
    Progress Make(bool terminal) {
        return {text, terminal, [this] { return seconds; }};
    }

    std::string Written() {
        std::string written = text.str();
        text.str("");
        return written;
    }

    std::ostringstream text;
    double seconds = 100;
};

TEST_F(ProgressText, IsALineForEachTenthWithoutATerminal) {
    Progress progress = Make(false);
    progress.Show(9, 100);
    EXPECT_EQ(Written(), "");
    progress.Show(10, 100);
    EXPECT_EQ(Written(), "10 %\n");
    progress.Show(19, 100);
    EXPECT_EQ(Written(), "");
    seconds += 30;
    progress.Show(25, 100);
    EXPECT_EQ(Written(), "20 %, 1:30 left\n");
    progress.Show(100, 100);
    EXPECT_EQ(Written(), "100 %, 0:00 left\n");
    progress.Clear();
    EXPECT_EQ(Written(), "");
}

TEST_F(ProgressText, IsABarDrawnOverOnATerminal) {
    Progress progress = Make(true);
    seconds += 5;
    progress.Show(1, 3);
    EXPECT_EQ(Written(), "\r[##########....................] 33 %, 0:10 left\x1B[K");
    progress.Show(1, 3);
    EXPECT_EQ(Written(), "") << "nothing is new";
    progress.Show(3, 3);
    EXPECT_EQ(Written(), "\r[##############################] 100 %, 0:00 left\x1B[K");
}

TEST_F(ProgressText, BarIsTakenAwayOnce) {
    Progress progress = Make(true);
    progress.Clear();
    EXPECT_EQ(Written(), "");
    progress.Show(1, 2);
    Written();
    progress.Clear();
    EXPECT_EQ(Written(), "\r\x1B[K");
    progress.Clear();
    EXPECT_EQ(Written(), "");
}

TEST_F(ProgressText, TimeLeftIsToldOnceTheRateIsKnown) {
    Progress progress = Make(true);
    seconds += 0.9;
    progress.Show(1, 10);
    EXPECT_EQ(Written().find("left"), std::string::npos);
    seconds += 7;
    progress.Show(0, 10);
    EXPECT_EQ(Written().find("left"), std::string::npos);
    progress.Show(1, 10);
    EXPECT_NE(Written().find(", 1:12 left"), std::string::npos) << "7.9 s for each of 9";
}

} // namespace
