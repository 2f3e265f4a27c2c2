// What the show needs of the machine's memory, however long it draws.
#include "Show.h"

#include "FrameLoop.h"

#include "Glut.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int framesOfAPass = 1000; // from the beginning of the music to its end
constexpr int passes = 26;

class ShowMemory : public gltest::Show {
protected:
    ShowMemory() : Show(160, 120) {
        for (const std::string name : {"texture.png", "skovr.png", "credits.png"}) {
            std::ifstream file(SHOW_RESOURCES "/" + name, std::ios::binary);
            EXPECT_TRUE(file) << name;
            AddResource(name, {std::istreambuf_iterator<char>(file), {}});
        }
    }

    static void DrawOnePass() {
        for (std::size_t frame = 0; frame < framesOfAPass; ++frame) {
            gltest::SetPosition(static_cast<unsigned int>(33 * frame));
            for (std::size_t band = 0; band < gltest::Spectrum().size(); ++band) {
                gltest::Spectrum()[band] = 0.001F * static_cast<float>((band + frame) % 100);
            }
            DrawGLScene();
            glFinish(); // as presenting a frame does
        }
    }
};

struct Memory {
    long residentKiB;
    long allocatedKiB; // fits into gaps, at first, without more being resident
};

// What was freed is given back before: how much of it is kept for later is the allocator's affair.
Memory MemoryNow() {
    malloc_trim(0);
    std::ifstream pages("/proc/self/statm");
    long total = 0;
    long resident = 0;
    pages >> total >> resident;
    const struct mallinfo2 heap = mallinfo2();
    return {.residentKiB = resident * (sysconf(_SC_PAGESIZE) / 1024),
            .allocatedKiB = static_cast<long>((heap.uordblks + heap.hblkhd) / 1024)};
}

} // namespace

TEST_F(ShowMemory, IsTheSameAfterAThousandFramesAndAfter26000) {
    DrawOnePass();
    const Memory early = MemoryNow();

    for (int pass = 1; pass < passes; ++pass) {
        DrawOnePass();
    }

    const Memory late = MemoryNow();
    std::printf("resident %ld, then %ld KiB; allocated %ld, then %ld KiB\n", early.residentKiB,
                late.residentKiB, early.allocatedKiB, late.allocatedKiB);
    EXPECT_EQ(doubles::glut.presentedFrames, passes * framesOfAPass);
    EXPECT_LE(std::labs(late.residentKiB - early.residentKiB), 1024);
    EXPECT_LE(std::labs(late.allocatedKiB - early.allocatedKiB), 256);
}
