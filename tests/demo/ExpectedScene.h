// The calls with which the show must draw, in lines as doubles::EffectsOf returns them.
#pragma once

#include "Fmod.h"

#include <optional>
#include <string>

struct ExpectedScene {
    std::optional<unsigned int> picture; ///< the texture of the picture quad; none: not drawn
    doubles::Spectrum spectrum;
    float rotate[3];   ///< in degrees, as the three transforms of the scene use it
    float globalAngle; ///< as left in the texture matrix
};

/// A whole Scene1, with a box as the loader makes it.
std::string Lines(const ExpectedScene& scene);

/// A whole frame with that scene, from the question whether the music plays on. Not the first,
/// which loads before.
std::string FrameLines(const ExpectedScene& scene);

/// A spectrum in which all bands differ, as do the sums of any neighbouring ones:
/// band b is b * b / 65536.
doubles::Spectrum QuadraticSpectrum();
