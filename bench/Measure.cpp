// Runs a command to its end and prints what it took: its processor time in seconds, its memory at
// most and at the end in MB. measure COMMAND [ARGUMENT...]
#include <cstdio>
#include <fstream>
#include <string>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

static void ReadMemory(pid_t process, double& mostMb, double& mb) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    std::string word;
    while (status >> word) {
        double* value = word == "VmHWM:" ? &mostMb : word == "VmRSS:" ? &mb : nullptr;
        if (value != nullptr && status >> *value) {
            *value /= 1024.0;
        }
    }
}

int main(int argc, char** argv) {
    pid_t process = 0;
    if (argc < 2 || posix_spawnp(&process, argv[1], nullptr, nullptr, argv + 1, environ) != 0) {
        std::fputs("usage: measure COMMAND [ARGUMENT...]\n", stderr);
        return 2;
    }
    double mostMb = 0.0;
    double mb = 0.0;
    int status = 0;
    rusage usage = {};
    while (wait4(process, &status, WNOHANG, &usage) == 0) {
        ReadMemory(process, mostMb, mb);
        usleep(50'000);
    }
    if (status != 0) {
        std::fprintf(stderr, "%s failed\n", argv[1]);
        return 1;
    }
    std::printf("cpu=%.3f most=%.1f rss=%.1f\n", Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
                mostMb, mb);
    return 0;
}
