// expected-frame NUMBER: prints the lines of that frame of the show, as doubles::EffectsOf gives
// them, while the title is shown. The first is 1; "nan" stands where the spectrum decides.
#include "ExpectedScene.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

int main(int argumentCount, char** arguments) {
    const auto frame = static_cast<float>(argumentCount > 1 ? std::atoi(arguments[1]) : 1);
    const float turned = 0.3F * (frame - 1);
    ExpectedScene scene = {.picture = 2, // "skovr" is loaded second
                           .spectrum = {},
                           .rotate = {turned + 0.1F, turned + 0.2F, turned + 0.3F},
                           .globalAngle = 0.005F * frame};
    scene.spectrum.fill(std::numeric_limits<float>::quiet_NaN());
    std::fputs(FrameLines(scene).c_str(), stdout);
    return 0;
}
