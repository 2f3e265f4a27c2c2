// The show's own objects, drawing into a real context with music as scripted.
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

/// What the music answers from now on.
inline void SetPosition(unsigned int ms) {
    doubles::fmod.positions = {ms};
}
inline doubles::Spectrum& Spectrum() {
    return doubles::fmod.spectra.front();
}

/// Before each test: nothing drawn yet, no resources, the music silent at its beginning.
/// The resources lie beside the executable: one such test at a time.
class Show : public testing::Test {
public:
    static constexpr int width = 1024;
    static constexpr int height = 768;

    /// Where a point given in the scene's units from the eye lies on the screen, in pixels from
    /// the top left.
    struct Place {
        double x;
        double y;
    };
    static Place OnScreen(double x, double y, double z);

protected:
    /// A test that looks at nothing drawn may have a smaller screen, which is quicker.
    explicit Show(int wantedWidth = width, int wantedHeight = height);
    ~Show() override;

    /// Makes @p file the show's picture @p name. Before the first frame.
    void AddPicture(const std::string& name, const PngFile& file);
    void AddResource(const std::string& fileName, const Bytes& bytes);

    /// What is to be seen after one more frame.
    Picture DrawFrame();

    /// The show is before its first frame once more, in a new context.
    void StartAgain();

private:
    int screenWidth;
    int screenHeight;
    std::optional<OffscreenContext> context;
    std::ostringstream trace; // the show writes about itself; not of interest here
    std::streambuf* standardOutput;
};

} // namespace gltest
