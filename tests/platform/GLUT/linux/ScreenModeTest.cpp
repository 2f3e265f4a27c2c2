// Which modes freeglut's game mode would keep.
#include "ScreenMode.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// 1280 x 1024 at 60.02 and at 85.02 Hz; then with short blanking, at 59.95 and at 60.09 Hz.
constexpr ScreenMode at60{108000, 1280, 1328, 1440, 1688, 1024, 1025, 1028, 1066, 5};
constexpr ScreenMode at85{157500, 1280, 1344, 1504, 1728, 1024, 1025, 1028, 1072, 5};
constexpr ScreenMode shortAt59{91000, 1280, 1328, 1360, 1440, 1024, 1027, 1034, 1054, 9};
constexpr ScreenMode shortAt60{91200, 1280, 1328, 1360, 1440, 1024, 1027, 1034, 1054, 9};
constexpr ScreenMode smallAt60{65000, 1024, 1048, 1184, 1344, 768, 771, 777, 806, 10};

ScreenMode WithFlags(ScreenMode mode, unsigned int flags) {
    mode.flags = flags;
    return mode;
}

TEST(GameModeKeeps, TheOnlyMode) {
    EXPECT_TRUE(GameModeKeeps(at60, std::vector{at60}));
}

TEST(GameModeKeeps, TheModeOfItsSizeAndRefreshRateWhereverItStands) {
    EXPECT_TRUE(GameModeKeeps(at60, std::vector{smallAt60, at85, at60, shortAt59}));
}

TEST(GameModeKeeps, TheFirstOfTwoModesWithTheSameRefreshRate) {
    EXPECT_TRUE(GameModeKeeps(at60, std::vector{at60, shortAt60}));
}

TEST(GameModeKeeps, NotTheSecondOfThem) {
    EXPECT_FALSE(GameModeKeeps(shortAt60, std::vector{at60, shortAt60}));
}

TEST(GameModeKeeps, TellsWholeRefreshRatesApartOnly) {
    EXPECT_TRUE(GameModeKeeps(shortAt59, std::vector{at60, shortAt59}));
}

TEST(GameModeKeeps, NotAModeThatIsNotOffered) {
    EXPECT_FALSE(GameModeKeeps(at60, std::vector<ScreenMode>{}));
    EXPECT_FALSE(GameModeKeeps(at60, std::vector{at85, smallAt60}));
}

TEST(GameModeKeeps, NotAModeThatDiffersInItsFlags) {
    EXPECT_FALSE(GameModeKeeps(at60, std::vector{WithFlags(at60, 6), at60}));
}

TEST(GameModeKeeps, NotAModeThatItWouldNotGoBackTo) {
    auto sameClock = at60;
    sameClock.verticalTotal = 1300; // another refresh rate, 49 Hz
    EXPECT_FALSE(GameModeKeeps(at60, std::vector{sameClock, at60}));
}

TEST(GameModeKeeps, NotOneModeForAnotherSizeOfTheSameRate) {
    EXPECT_TRUE(GameModeKeeps(at60, std::vector{smallAt60, at60}));
    EXPECT_FALSE(GameModeKeeps(smallAt60, std::vector{at60}));
}

TEST(GameModeKeeps, AModeWithoutTimingsToo) {
    const ScreenMode bare{0, 1280, 0, 0, 0, 1024, 0, 0, 0, 0};
    EXPECT_TRUE(GameModeKeeps(bare, std::vector{bare}));
}

TEST(ServerSwitchesModes, OnThisMachineOnly) {
    EXPECT_TRUE(ServerSwitchesModes(":0"));
    EXPECT_TRUE(ServerSwitchesModes(":12.0"));
    EXPECT_TRUE(ServerSwitchesModes("unix:0"));
    EXPECT_FALSE(ServerSwitchesModes("localhost:10.0"));
    EXPECT_FALSE(ServerSwitchesModes("unixes:0"));
    EXPECT_FALSE(ServerSwitchesModes("192.0.2.1:0"));
    EXPECT_FALSE(ServerSwitchesModes(""));
}

} // namespace
