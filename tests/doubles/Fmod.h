// A double of the sound library: records every operation, which does what a script says.
#pragma once

#include <FMOD/FMOD.h>

#include <array>
#include <deque>
#include <map>
#include <string>

namespace doubles {

using Spectrum = std::array<float, 512>;

/// Each call consumes the first value of its sequence; the last value stays.
struct FmodScript {
    unsigned int version = FMOD_VERSION;
    std::deque<unsigned int> positions = {0}; ///< ms
    std::deque<Spectrum> spectra = {Spectrum{}};
    bool playing = true;
    bool mute = false;
    bool paused = false;

    /// The results of operations that fail, by name, such as "FMOD::System::init". Their output
    /// parameters are not set. Opening an empty path always gives FMOD_ERR_FILE_NOTFOUND.
    std::map<std::string, FMOD_RESULT> results;
};

extern FmodScript fmod;

} // namespace doubles
