// Program entry: records the show that it is linked with, from that show's own main to its exit.
#include "Canvas.h"
#include "Glut.h"
#include "Interruption.h"
#include "Options.h"
#include "Progress.h"
#include "Recording.h"
#include "SoundOutput.h"
#include "VirtualTime.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

extern "C" {
int __real_main(int argc, char** argv); // the show's; the linker's --wrap gives these names
int __wrap_main(int argc, char** argv);
}

namespace {

using namespace record;

// A show whose music is too short would never reach its end.
constexpr std::int64_t longestShowMs = 2 * lastPictureMs;

std::unique_ptr<Recording> recording; // none: not begun, or over
std::unique_ptr<Progress> progress;

void Say(const std::string& text) {
    if (progress != nullptr) {
        progress->Clear();
    }
    std::cerr << "skovra-record: " << text << "\n" << std::flush;
}

double Seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void DiscardStandardOutput() {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
}

/// Throws std::runtime_error if some of what was printed is lost.
void FlushStandardOutput() {
    errno = 0;
    std::cout.flush();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        // Of an earlier failure there is only the mark.
        throw std::runtime_error("standard output: " + (errno != 0
                                                            ? std::generic_category().message(errno)
                                                            : "not all could be written"));
    }
}

void ShowPicture(const Canvas& canvas, std::int64_t ms) {
    ThrowIfInterrupted();
    if (ms > longestShowMs) {
        throw std::runtime_error("the show does not end by itself: its music is too short");
    }
    recording->AddPicture(ms, [&canvas](Picture& picture) { canvas.Read(picture); });
    progress->Show(recording->PicturesAdded(), recording->PicturesWanted());
    if (recording->HasAll()) {
        std::exit(0);
    }
}

void Wire(const Options& options) {
    static const Canvas* canvas = nullptr; // lives as long as the process
    UseWindow({.width = options.width,
               .height = options.height,
               .open = [options] { canvas = new Canvas(options.width, options.height); },
               .pass = PlaySoundUntil,
               .prepare =
                   [](std::int64_t ms, bool seen) {
                       canvas->Use(seen &&
                                   recording->Wants(ms)); // each picture begins with a clear
                   },
               .show = [](std::int64_t ms) { ShowPicture(*canvas, ms); }});
    ListenToSound([](std::span<const float> samples) { recording->AddSound(samples); });
}

/// Runs when the show, or this program, ends the process with @p status.
void Complete(int status, void*) {
    if (recording == nullptr) {
        return;
    }
    bool complete = false;
    if (status != 0) {
        Say("the show ended with an error; --trace shows what it has to say");
    } else {
        try {
            recording->Finish();
            FlushStandardOutput();
            complete = true;
        } catch (const std::exception& failure) {
            Say(failure.what());
        }
    }
    progress->Clear();
    recording.reset();
    if (!complete) {
        std::fflush(nullptr);
        _exit(1); // exit is already running: nothing else can change the status
    }
}

/// Never returns: the show ends the process, and errors are thrown.
void Record(const Options& options, char* programName) {
    NoteInterruptions();
    // By default these signals end the process; if they are ignored, the write reports the error.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    progress = std::make_unique<Progress>(std::cerr, isatty(STDERR_FILENO) != 0, Seconds);
    recording = std::make_unique<Recording>(options);
    Wire(options);
    if (!options.trace) {
        DiscardStandardOutput();
    }
    on_exit(Complete, nullptr);
    std::array<char*, 2> arguments = {programName, nullptr};
    __real_main(1, arguments.data());
    throw std::runtime_error("the show returned from its main loop");
}

} // namespace

int __wrap_main(int argc, char** argv) {
    Options options;
    try {
        options = ParseOptions(std::span<const char* const>(argv + 1, argv + argc));
    } catch (const UsageError& error) {
        Say(error.what());
        std::cerr << UsageText();
        return 2;
    }
    try {
        if (options.help || options.version) {
            std::cout << (options.help ? UsageText() : "skovra-record " SKOVRA_VERSION "\n");
            FlushStandardOutput();
            return 0;
        }
        Record(options, argv[0]);
    } catch (const std::exception& failure) {
        Say(failure.what());
    }
    recording.reset();
    EndIfInterrupted();
    return 1;
}
