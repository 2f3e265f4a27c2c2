// Plays a file as the show does, without its pictures: MusicPlayer FILE UNTIL_MS [sealed|planted].
//
// sealed: for the second half the main thread may make no system call but to read the clock and to
// end the process, or the kernel ends it with SIGSYS. planted: and then it makes another one.
#include <FMOD/FMOD.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <thread>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

static bool Seal() {
    std::array<sock_filter, 5> program = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clock_gettime, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog filter = {program.size(), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

namespace {

class Player {
public:
    bool Start(const char* path) {
        FMOD::Sound* sound = nullptr;
        return FMOD::System_Create(&system) == FMOD_OK &&
               system->init(1, FMOD_INIT_NORMAL, nullptr) == FMOD_OK &&
               system->createSound(path, FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM, nullptr,
                                   &sound) == FMOD_OK &&
               system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel) == FMOD_OK;
    }

    // What a frame of the show asks for; false: the position is reached, or something failed.
    bool Frame(unsigned int untilMs) {
        unsigned int position = 0;
        bool playing = false;
        return system->update() == FMOD_OK && channel->isPlaying(&playing) == FMOD_OK &&
               channel->getPosition(&position, FMOD_TIMEUNIT_MS) == FMOD_OK &&
               system->getSpectrum(spectrum.data(), 512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE) ==
                   FMOD_OK &&
               playing && position < untilMs;
    }

private:
    FMOD::System* system = nullptr;
    FMOD::Channel* channel = nullptr;
    std::array<float, 512> spectrum = {};
};

} // namespace

int main(int argc, char** argv) {
    Player player;
    if (argc < 3 || !player.Start(argv[1])) {
        return 1;
    }
    const std::string_view mode = argc > 3 ? argv[3] : "";
    const auto untilMs = static_cast<unsigned int>(std::strtoul(argv[2], nullptr, 10));
    while (player.Frame(mode.empty() ? untilMs : untilMs / 2)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    if (mode.empty()) {
        std::exit(0); // as the show ends: nothing is released
    }
    if (!Seal()) {
        return 2;
    }
    while (player.Frame(untilMs)) {
    }
    if (mode == "planted") {
        std::this_thread::yield();
    }
    _exit(0);
}
