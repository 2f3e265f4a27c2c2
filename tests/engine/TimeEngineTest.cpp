// The demo's clock.
#include "TimeEngine.h"

#include "FmodEngine.h"

#include "Effects.h"
#include "Fixture.h"
#include "Fmod.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <limits>
#include <memory>

namespace {

using doubles::EffectsOf;

class TimeEngineTest : public doubles::Fixture {
protected:
    TimeEngineTest() {
        EffectsOf([this] {
            music = std::make_unique<engine::FmodEngine>("synchtune");
            music->Play();
        });
        clock = std::make_unique<engine::TimeEngine>(music.get());
    }

    /// One tick at each of @p positions.
    void TickAt(const std::deque<unsigned int>& positions) {
        doubles::fmod.positions = positions;
        for (std::size_t tick = 0; tick < positions.size(); ++tick) {
            clock->Update();
        }
    }

    void ExpectTimes(int previous, int current, int delta) const {
        EXPECT_EQ(clock->prevTime, previous);
        EXPECT_EQ(clock->curTime, current);
        EXPECT_EQ(clock->deltaTime, delta);
    }

    std::unique_ptr<engine::FmodEngine> music;
    std::unique_ptr<engine::TimeEngine> clock;
};

TEST_F(TimeEngineTest, FreshClockReadsZeroOnItsMusic) {
    EXPECT_EQ(clock->fmod, music.get());
    ExpectTimes(0, 0, 0);
}

TEST_F(TimeEngineTest, IsMadeWithoutAskingForThePosition) {
    EXPECT_EQ(EffectsOf([this] { engine::TimeEngine(music.get()); }), "");
}

TEST_F(TimeEngineTest, HasItsFieldsInOrder) {
    EXPECT_TRUE(
        doubles::AreInOrder({&clock->fmod, &clock->curTime, &clock->deltaTime, &clock->prevTime}));
}

TEST_F(TimeEngineTest, TickAsksForThePositionOnce) {
    EXPECT_EQ(EffectsOf([this] { clock->Update(); }),
              doubles::Lines({"FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)"}));
}

TEST_F(TimeEngineTest, TickStepsFromTheOneBeforeForwardsNotAtAllOrBack) {
    TickAt({1500});
    ExpectTimes(0, 1500, 1500);
    TickAt({1540});
    ExpectTimes(1500, 1540, 40);
    TickAt({1540});
    ExpectTimes(1540, 1540, 0);
    TickAt({400});
    ExpectTimes(1540, 400, -1140);
}

TEST_F(TimeEngineTest, StepWrapsAround) {
    TickAt({0x7FFFFFFFU, 0x80000001U});
    EXPECT_EQ(clock->curTime, std::numeric_limits<std::int32_t>::min() + 1);
    EXPECT_EQ(clock->deltaTime, 2);
    TickAt({0x7FFFFFFFU});
    EXPECT_EQ(clock->deltaTime, -2);
}

TEST_F(TimeEngineTest, ClearAllForgetsTheMusicToo) {
    TickAt({1000, 1040});
    clock->ClearAll();
    EXPECT_EQ(clock->fmod, nullptr);
    ExpectTimes(0, 0, 0);
}

TEST_F(TimeEngineTest, RefusedPositionEndsTheProcessAfterTheFirstStepOfATick) {
    TickAt({1000, 1040});
    static const engine::TimeEngine* observed;
    observed = clock.get();
    doubles::fmod.results["FMOD::Channel::getPosition"] = FMOD_ERR_INVALID_HANDLE;
    const auto tick = [this] {
        // Exit handlers run in reverse: this line comes before the list of effects.
        doubles::ReportEffectsAtExit([this] {
            std::atexit([] {
                doubles::RecordLine("curTime " + doubles::Text(observed->curTime) + ", prevTime " +
                                    doubles::Text(observed->prevTime) + ", deltaTime " +
                                    doubles::Text(observed->deltaTime));
            });
            clock->Update();
        });
    };
    EXPECT_EXIT(tick(), testing::ExitedWithCode(255),
                testing::Eq(doubles::Lines({
                    "FMOD::Channel::getPosition(FMOD_TIMEUNIT_MS)",
                    R"(print "FMOD error! (33) An invalid object handle was used. \n")",
                    "curTime 1040, prevTime 1040, deltaTime 40",
                })));
}

} // namespace
