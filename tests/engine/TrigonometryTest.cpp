// The tables of sines and cosines.
#include "Trigonometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <type_traits>
#include <vector>

namespace {

// The tables as a new process has them: filled before any test.
const std::vector<float> sinesAtStart(std::begin(engine::sinusTable), std::end(engine::sinusTable));
const std::vector<float> cosinesAtStart(std::begin(engine::cosinusTable),
                                        std::end(engine::cosinusTable));

TEST(Trigonometry, TablesHave360Floats) {
    EXPECT_TRUE((std::is_same_v<decltype(engine::sinusTable), float[360]>));
    EXPECT_TRUE((std::is_same_v<decltype(engine::cosinusTable), float[360]>));
}

TEST(Trigonometry, TablesAreZeroUntilTheyAreGenerated) {
    EXPECT_EQ(sinesAtStart, std::vector<float>(360));
    EXPECT_EQ(cosinesAtStart, std::vector<float>(360));
}

TEST(Trigonometry, EntriesAreOfRadians) {
    engine::GenerateSinTable();
    EXPECT_EQ(engine::sinusTable[0], 0.0F);
    EXPECT_EQ(engine::cosinusTable[0], 1.0F);
    EXPECT_NEAR(engine::sinusTable[1], 0.8414710, 1e-7);
    EXPECT_NEAR(engine::cosinusTable[1], 0.5403023, 1e-7);
    EXPECT_NEAR(engine::sinusTable[90], 0.8939967, 1e-7); // not 1
    EXPECT_NEAR(engine::cosinusTable[180], -0.5984601, 1e-7);
    EXPECT_NEAR(engine::sinusTable[359], 0.7568222, 1e-7);
}

TEST(Trigonometry, EveryEntryIsComputedInSinglePrecisionEachTime) {
    std::fill(std::begin(engine::sinusTable), std::end(engine::sinusTable), 7.0F);
    std::fill(std::begin(engine::cosinusTable), std::end(engine::cosinusTable), 7.0F);
    engine::GenerateSinTable();
    for (int i = 0; i < 360; ++i) {
        EXPECT_EQ(engine::sinusTable[i], ::sinf(static_cast<float>(i))) << i;
        EXPECT_EQ(engine::cosinusTable[i], ::cosf(static_cast<float>(i))) << i;
    }
}

} // namespace
