// Writes down every music position that the show is told, in the file that POSITION_LOG names:
// a line each, the position and the time of the answer, both in ms.
#include "Log.h"

#include <FMOD/FMOD.h>

#include <chrono>

// The names that the linker's --wrap gives to Channel::getPosition and to its stand-in.
extern "C" FMOD_RESULT __real__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel,
                                                                unsigned int* position,
                                                                FMOD_TIMEUNIT unit);
extern "C" FMOD_RESULT __wrap__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel,
                                                                unsigned int* position,
                                                                FMOD_TIMEUNIT unit);

FMOD_RESULT __wrap__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel, unsigned int* position,
                                                     FMOD_TIMEUNIT unit) {
    static std::FILE* const log = OpenLog("POSITION_LOG");
    const FMOD_RESULT result = __real__ZN4FMOD7Channel11getPositionEPjj(channel, position, unit);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::fprintf(
        log, "%u %lld\n", *position,
        static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
    return result;
}
