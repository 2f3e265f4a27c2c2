#include "UnfinishedFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace record {

namespace fs = std::filesystem;

UnfinishedFile::UnfinishedFile(const std::string& finalPath) {
    const fs::file_status status = fs::status(finalPath);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        // Renaming to it would replace a device by a file.
        throw std::runtime_error("not an ordinary file");
    }
    // If it is a symbolic link, its target is replaced.
    target = fs::weakly_canonical(finalPath);
    const std::string beside = target + "." + std::to_string(getpid()) + ".part";
    const int descriptor = open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    close(descriptor);
    path = beside;
}

UnfinishedFile::~UnfinishedFile() {
    if (!path.empty()) {
        unlink(path.c_str());
    }
}

void UnfinishedFile::Commit() {
    if (std::rename(path.c_str(), target.c_str()) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    path.clear();
}

} // namespace record
