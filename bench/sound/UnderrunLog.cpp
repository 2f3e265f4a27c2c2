// In the show as it is: keeps a count of how often the decoder did not keep up with the music, in
// the file that STARVATION_LOG names.
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
    const std::int64_t starvations = sound::ChannelObject::Of(*channel).voice->Starvations();
    if (const char* path = std::getenv("STARVATION_LOG"); starvations != written && path) {
        std::ofstream(path) << starvations << '\n';
        written = starvations;
    }
    return __real__ZN4FMOD7Channel11getPositionEPjj(channel, position, unit);
}
