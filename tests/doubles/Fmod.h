// The sound library: every operation is recorded and does what a script says.
#pragma once

#include <FMOD/FMOD.h>

#include <array>
#include <deque>
#include <map>
#include <string>

namespace doubles {

using Spectrum = std::array<float, 512>;

/// Of the sequences each answer takes the first value and drops it, but for the last, which stays.
struct FmodScript {
    unsigned int version = FMOD_VERSION;
    std::deque<unsigned int> positions = {0}; ///< ms
    std::deque<Spectrum> spectra = {Spectrum{}};
    bool playing = true;
    bool mute = false;
    bool paused = false;

    /// What operations answer that do not succeed, by name, such as "FMOD::System::init".
    /// They hand nothing over. Opening an empty path gives FMOD_ERR_FILE_NOTFOUND by itself.
    std::map<std::string, FMOD_RESULT> results;
};

extern FmodScript fmod;

} // namespace doubles
