// The show's own object files, drawing into a real context, with scripted music.
#pragma once

#include "Fmod.h"
#include "OffscreenContext.h"
#include "Picture.h"
#include "PngFile.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <streambuf>
#include <string>

namespace gltest {

/// The playback position from now on.
inline void SetPosition(unsigned int ms) {
    doubles::fmod.positions = {ms};
}
inline doubles::Spectrum& Spectrum() {
    return doubles::fmod.spectra.front();
}

/// Before each test: nothing drawn yet, no resources, the music silent at its start.
/// The resources are beside the executable: one such test at a time.
class Show : public testing::Test {
public:
    static constexpr int width = 1024;
    static constexpr int height = 768;

    /// The position on the screen, in pixels from the top left, of a point given in the scene's
    /// units from the eye.
    struct Place {
        double x;
        double y;
    };
    static Place OnScreen(double x, double y, double z);

protected:
    /// A test that does not look at the picture may use a smaller screen, which is faster.
    explicit Show(int wantedWidth = width, int wantedHeight = height);
    ~Show() override;

    /// Makes @p file the show's picture @p name. Before the first frame.
    void AddPicture(const std::string& name, const PngFile& file);
    void AddResource(const std::string& fileName, const Bytes& bytes);

    /// The picture after one more frame.
    Picture DrawFrame();

    /// Returns to before the show's first frame, in a new context.
    void StartAgain();

private:
    int screenWidth;
    int screenHeight;
    std::optional<OffscreenContext> context;
    std::ostringstream trace; // the show's output, not used
    std::streambuf* standardOutput;
};

} // namespace gltest
