// Writes down every music position that the show is told, in the file that POSITION_LOG names:
// a line each, the position and the time of the answer, both in ms.
#include <FMOD/FMOD.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

// The names that the linker's --wrap gives to Channel::getPosition and to its stand-in.
extern "C" FMOD_RESULT __real__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel,
                                                                unsigned int* position,
                                                                FMOD_TIMEUNIT unit);
extern "C" FMOD_RESULT __wrap__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel,
                                                                unsigned int* position,
                                                                FMOD_TIMEUNIT unit);

namespace {

std::FILE* OpenLog() {
    const char* path = std::getenv("POSITION_LOG");
    std::FILE* log = path != nullptr ? std::fopen(path, "w") : nullptr;
    if (log == nullptr) {
        std::perror("POSITION_LOG");
        std::exit(2);
    }
    std::setvbuf(log, nullptr, _IOLBF, 0); // a test reads along
    return log;
}

} // namespace

FMOD_RESULT __wrap__ZN4FMOD7Channel11getPositionEPjj(FMOD::Channel* channel, unsigned int* position,
                                                     FMOD_TIMEUNIT unit) {
    static std::FILE* const log = OpenLog();
    const FMOD_RESULT result = __real__ZN4FMOD7Channel11getPositionEPjj(channel, position, unit);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::fprintf(
        log, "%u %lld\n", *position,
        static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
    return result;
}
