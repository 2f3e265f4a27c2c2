// How many batches the show's own frames take.
#include "RecordingCanvas.h"

#include "Current.h"

#include "FrameLoop.h"
#include "Loader.h"
#include "main.h"

#include "Box.h"
#include "DemoEngine.h"
#include "Display.h"
#include "FmodEngine.h"

#include "Fmod.h"

#include <GL/glpng.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <optional>
#include <sstream>

namespace {

std::optional<opengl::FixedFunction> context;

} // namespace

opengl::FixedFunction& opengl::Current() {
    return *context;
}

// Every picture is there.
unsigned int pngBind(const char*, int, int, pngInfo*, int, int minFilter, int) {
    GLuint name = 0;
    context->GenTextures(1, &name);
    context->BindTexture(GL_TEXTURE_2D, name);
    context->TexParameter(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minFilter);
    context->SetTextureHasImage();
    return name;
}

namespace {

class ShowBatches : public testing::Test {
protected:
    ShowBatches() : standardOutput(std::cout.rdbuf(trace.rdbuf())) {
        doubles::fmod = {};
        doubles::fmod.spectra.front().fill(0.01F);
        context.emplace(recorded);
        if (demo == nullptr) { // lives as long as the process, like the show's
            demo = new engine::DemoEngine("Batches");
            demo->SetFmod(new engine::FmodEngine("synchtune"));
        }
        loaded = 0;
        engine::ReSizeGLScene(1024, 768);
    }

    ~ShowBatches() override {
        delete kasse;
        kasse = nullptr;
        std::cout.rdbuf(standardOutput);
    }

    /// The batches of one more frame.
    const auto& DrawFrame(unsigned int positionMs) {
        recorded.batches.clear();
        recorded.clears.clear();
        doubles::fmod.positions = {positionMs};
        DrawGLScene();
        context->FinishFrame(); // as glutSwapBuffers does
        return recorded.batches;
    }

    gltest::RecordingCanvas recorded;
    std::ostringstream trace;
    std::streambuf* standardOutput;
};

} // namespace

TEST_F(ShowBatches, AreThePictureTheBarsAndTheBox) {
    for (const unsigned int positionMs : {0U, 14'999U, 15'000U, 29'999U}) {
        const auto& batches = DrawFrame(positionMs);
        ASSERT_EQ(batches.size(), 3U) << "at " << positionMs << " ms";
        EXPECT_NE(batches[0].state.texture, 0U);
        EXPECT_EQ(batches[1].state.texture, 0U);
        EXPECT_EQ(batches[1].vertices.size(), 255U * 6);
        EXPECT_NE(batches[2].state.texture, 0U);
        EXPECT_EQ(recorded.clears.size(), 1U);
    }
}

TEST_F(ShowBatches, AreTheBarsAndTheBoxWhenThereIsNoPicture) {
    EXPECT_EQ(DrawFrame(30'000).size(), 2U);
}

TEST_F(ShowBatches, AreDrawnWithoutAnError) {
    DrawFrame(0);
    EXPECT_EQ(context->GetError(), GLenum{GL_NO_ERROR});
}
