// Linked into the unchanged show: writes the number of decoder underruns to the file that
// UNDERRUN_LOG names.
#include "Objects.h"

#include <FMOD/FMOD.h>

#include <cstdlib>
#include <fstream>

// The names that the linker's --wrap gives to Channel::getPosition and to its stand-in.
extern "C" FMOD_RESULT __real__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel,
                                                                unsigned int* position,
                                                                FMOD_TIMEUNIT unit);
extern "C" FMOD_RESULT __wrap__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel,
                                                                unsigned int* position,
                                                                FMOD_TIMEUNIT unit);

FMOD_RESULT __wrap__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel, unsigned int* position,
                                                     FMOD_TIMEUNIT unit) {
    static std::int64_t written = -1;
    const std::int64_t underruns = sound::ChannelObject::Of(*channel).voice->Underruns();
    if (const char* path = std::getenv("UNDERRUN_LOG"); underruns != written && path) {
        std::ofstream(path) << underruns << '\n';
        written = underruns;
    }
    return __real__ZN4FMOD7Channel11getPositionEPjj(channel, position, unit);
}
