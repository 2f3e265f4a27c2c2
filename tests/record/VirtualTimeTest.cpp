// GLUT and the sound's output in virtual time: what happens when.
#include "VirtualTime.h"
#include "Glut.h"
#include "Output.h"
#include "SoundOutput.h"

#include <GL/glut.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

std::ostringstream events;
int ticksLeft = 0;

void Tick(int value) {
    events << "timer " << value << "; ";
    if (--ticksLeft > 0) {
        glutTimerFunc(25, Tick, value + 1);
    }
    glutPostRedisplay();
    glutPostRedisplay(); // twice is once
}

TEST(Glut, DrawsAtOnceThenTwiceATickAndShowsTheLastDrawn) {
    record::UseWindow(
        {.width = 300,
         .height = 200,
         .open = [] { events << "open; "; },
         .pass = [](std::int64_t ms) { events << ms << " ms; "; },
         .prepare = [](std::int64_t,
                       bool seen) { events << (seen ? "to be seen; " : "not to be seen; "); },
         .show = [](std::int64_t ms) { events << "shown at " << ms << "; "; }});
    ticksLeft = 2;
    glutInitWindowSize(1024, 768);
    glutCreateWindow("a window");
    glutDisplayFunc([] { events << "drawn; "; });
    glutReshapeFunc([](int width, int height) { events << width << "x" << height << "; "; });
    glutTimerFunc(25, Tick, 1);
    glutMainLoop();
    EXPECT_EQ(events.str(), "open; 300x200; "
                            "to be seen; drawn; shown at 0; "
                            "25 ms; not to be seen; timer 1; to be seen; drawn; shown at 25; "
                            "50 ms; not to be seen; timer 2; to be seen; drawn; shown at 50; ");
}

TEST(VirtualTime, PositionsRoundedDownAreThoseAskedFor) {
    for (std::int64_t ms = 0; ms <= 40000; ++ms) {
        const std::int64_t frames = record::FramesUntil(ms);
        ASSERT_EQ(frames * 1000 / 44100, ms);
        ASSERT_TRUE(frames == 0 || (frames - 1) * 1000 / 44100 < ms) << "no later than it must be";
    }
}

/// A source that counts: its left side is the frame's number, its right side the same negated.
struct Counting {
    std::int64_t frames = 0;
    std::int64_t ready = 0;
};

void WaitUntilReady(void* context, std::int32_t frames) noexcept {
    auto& counting = *static_cast<Counting*>(context);
    counting.ready = counting.frames + frames;
}

void Render(void* context, float* block, std::int32_t frames) noexcept {
    auto& counting = *static_cast<Counting*>(context);
    for (std::int32_t i = 0; i < frames; ++i, ++counting.frames) {
        const bool ready = counting.frames < counting.ready;
        const float number = ready ? static_cast<float>(counting.frames) : -1.0F;
        *block++ = number;
        *block++ = -number;
    }
}

TEST(SoundOutput, PlaysAsFarAsToldAndWaitsForAllOfIt) {
    Counting counting;
    std::vector<float> heard;
    record::ListenToSound([&heard](std::span<const float> samples) {
        heard.insert(heard.end(), samples.begin(), samples.end());
    });
    record::PlaySoundUntil(100); // there is no output yet
    const sound::OutputHandle output = sound::StartOutput({&counting, Render, WaitUntilReady});
    EXPECT_EQ(sound::HeardFrames(*output), 0);
    sound::AwaitDevice(*output);
    EXPECT_EQ(sound::HeardFrames(*output), 0);

    record::PlaySoundUntil(25);
    EXPECT_EQ(sound::HeardFrames(*output), 1103);
    record::PlaySoundUntil(25);
    EXPECT_EQ(sound::HeardFrames(*output), 1103);
    record::PlaySoundUntil(1000);
    EXPECT_EQ(sound::HeardFrames(*output), 44100);

    ASSERT_EQ(heard.size(), 88200U);
    for (std::size_t i = 0; i < heard.size() / 2; ++i) {
        ASSERT_EQ(heard[2 * i], static_cast<float>(i));
        ASSERT_EQ(heard[2 * i + 1], -static_cast<float>(i));
    }
    record::ListenToSound({});
}

} // namespace
