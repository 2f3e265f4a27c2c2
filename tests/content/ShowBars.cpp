#include "ShowBars.h"

#include "Loader.h"
#include "Scene1.h"
#include "main.h"

#include "DemoEngine.h"
#include "FmodEngine.h"

#include "Bundle.h"
#include "ScriptedOutput.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace {

// The bars stand 1300 units before the eye, which sees 45 degrees from the lower to the upper edge
// of 768 lines; cot(45 / 2 degrees) = 1 + sqrt(2).
constexpr double pixelsPerUnit = 384.0 * 2.4142135623730951 / 1300.0;
constexpr double lowerEdge = 384.0 / pixelsPerUnit - 540.0; // above the bars' feet, in units

/// The vertices of a frame in the order they are drawn in, their y alone.
std::vector<float> drawn;

/// The bars are the quads before the box, which has six.
content::Bars TakeBars() {
    const std::size_t first = drawn.size() - 4 * (6 + std::tuple_size_v<content::Bars>);
    content::Bars bars{};
    for (std::size_t bar = 0; bar < bars.size(); ++bar) {
        const double top = drawn.at(first + 4 * bar); // a quad begins at its upper right
        bars[bar] = std::max(0.0, (top + lowerEdge) * pixelsPerUnit);
    }
    drawn.clear();
    return bars;
}

void Append(std::vector<float>& all, const std::vector<float>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

} // namespace

// The linker gives these names to what the show calls and to what is called in its place.
extern "C" {
void __wrap_glVertex3f(GLfloat x, GLfloat y, GLfloat z);

void __wrap_glVertex3f(GLfloat /*x*/, GLfloat y, GLfloat /*z*/) {
    drawn.push_back(y);
}
}

namespace content {

Performance Perform(const std::string& path) {
    doubles::bundle.paths["synchtune.mp3"] = path;
    demo = new engine::DemoEngine("Bars"); // but for the music, it lives as long as the process
    demo->SetFmod(new engine::FmodEngine("synchtune"));
    Loader();

    Performance performance;
    for (int ms = 0; ms <= endOfShowMs; ms += frameMs) {
        const std::int64_t heard = std::int64_t{ms} * sampleRateHz / 1000;
        const auto had = static_cast<std::int64_t>(performance.samples.size() / 2);
        Append(performance.samples, script::Pull(static_cast<int>(heard - had)));
        script::SetHeard(heard);
        demo->fmod->UpdateSpectrum();
        Scene1();
        performance.frames.push_back(TakeBars());
    }
    bool playing = true;
    while (playing) { // the rest, which nobody sees
        Append(performance.samples, script::Pull(sampleRateHz));
        script::HearAll();
        demo->fmod->channel->isPlaying(&playing);
    }
    unsigned int lengthMs = 0;
    if (demo->fmod->channel->getPosition(&lengthMs, FMOD_TIMEUNIT_MS) != FMOD_OK) {
        throw std::runtime_error("the music has no end");
    }
    performance.samples.resize(2 * (std::size_t{lengthMs} * sampleRateHz / 1000));
    delete demo->fmod;
    demo->fmod = nullptr;
    return performance;
}

double MiddleOfBar(int bar) {
    return 512.0 + (-720.0 + 1.3 * 4.7 * (bar + 0.5)) * pixelsPerUnit;
}

} // namespace content
