#include "Encoder.h"

#include "Interruption.h"
#include "Picture.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace record {

namespace {

/// How another program is started: without this one's standard input and output, and in a process
/// group of its own, which Ctrl-C does not reach: this program ends it.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&files);
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
        sigset_t pipeOnly;
        sigemptyset(&pipeOnly);
        sigaddset(&pipeOnly, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &pipeOnly);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&files);
    }

    void PassOn(int descriptor) {
        posix_spawn_file_actions_adddup2(&files, descriptor, descriptor);
    }

    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
};

std::string HowItEnded(int status) {
    return WIFSIGNALED(status) ? "ffmpeg was ended by signal " + std::to_string(WTERMSIG(status))
                               : "ffmpeg ended with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

Encoder::Encoder(const VideoFormat& format, const std::string& path) {
    Start(FfmpegArguments(format, pictures.ReadingEnd(), sound.ReadingEnd(), path));
    pictures.CloseReadingEnd();
    sound.CloseReadingEnd();
}

Encoder::~Encoder() {
    if (process != -1) {
        kill(process, SIGKILL); // SIGTERM would have it wait for pictures or complete the file
        Wait();
    }
}

void Encoder::Start(const std::vector<std::string>& arguments) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str())); // as posix_spawn requires
    }
    pointers.push_back(nullptr);
    SpawnSettings settings;
    settings.PassOn(pictures.ReadingEnd());
    settings.PassOn(sound.ReadingEnd());
    const int error = posix_spawnp(&process, pointers.front(), &settings.files,
                                   &settings.attributes, pointers.data(), environ);
    if (error != 0) {
        process = -1;
        throw std::runtime_error("a video needs the program ffmpeg, which cannot be started: " +
                                 std::generic_category().message(error));
    }
}

void Encoder::AddSound(std::span<const float> samples) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(samples.data());
    soundBytes.insert(soundBytes.end(), bytes, bytes + samples.size_bytes());
}

void Encoder::AddPicture(const Picture& picture) {
    std::span<const unsigned char> bytes = picture.pixels;
    while (!bytes.empty()) {
        bytes = bytes.subspan(WriteSome(bytes));
    }
}

void Encoder::Finish() {
    pictures.CloseWritingEnd();
    while (!soundBytes.empty()) {
        WriteSome({});
    }
    sound.CloseWritingEnd();
    const int status = Wait();
    if (status != 0) {
        throw std::runtime_error(HowItEnded(status));
    }
}

/// Writes some of @p pictureBytes or of the sound to ffmpeg, whichever it accepts first: while it
/// waits for one, it does not read the other. Returns how many of @p pictureBytes were written.
std::size_t Encoder::WriteSome(std::span<const unsigned char> pictureBytes) {
    std::array<pollfd, 2> ends = {
        pollfd{pictureBytes.empty() ? -1 : pictures.WritingEnd(), POLLOUT, 0},
        pollfd{soundBytes.empty() ? -1 : sound.WritingEnd(), POLLOUT, 0}};
    if (poll(ends.data(), ends.size(), -1) < 0) {
        ThrowIfInterrupted();
        return 0;
    }
    if (ends[1].revents != 0) {
        const std::size_t count = WriteTo(sound, soundBytes);
        soundBytes.erase(soundBytes.begin(), soundBytes.begin() + static_cast<ssize_t>(count));
    }
    return ends[0].revents != 0 ? WriteTo(pictures, pictureBytes) : 0;
}

std::size_t Encoder::WriteTo(const Pipe& pipe, std::span<const unsigned char> bytes) {
    const auto count = pipe.Write(bytes.data(), bytes.size());
    if (!count) {
        pictures.CloseWritingEnd();
        sound.CloseWritingEnd();
        throw std::runtime_error(HowItEnded(Wait()) + " before the video was complete");
    }
    return *count;
}

/// Waits for ffmpeg to end; returns its status as waitpid does.
int Encoder::Wait() {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    process = -1;
    return status;
}

} // namespace record
