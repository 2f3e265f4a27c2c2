#include "UnfinishedFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace record {

namespace fs = std::filesystem;

namespace {

/// Where links lead; the last one may lead to nothing.
fs::path Followed(fs::path path) {
    std::error_code error;
    while (fs::is_symlink(path, error)) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

/// @p name cut to @p bytes, between two characters.
std::string CutShort(const std::string& name, std::size_t bytes) {
    const auto goesOn = [&](std::size_t i) {
        return (static_cast<unsigned char>(name[i]) & 0xC0U) == 0x80U;
    };
    while (bytes > 0 && bytes < name.size() && goesOn(bytes)) {
        --bytes;
    }
    return name.substr(0, bytes);
}

/// A name beside @p target that this process has given to no other file. No longer than the
/// target's, unless that is short.
fs::path NameBeside(const fs::path& target) {
    constexpr std::size_t alwaysPossible = 64;
    static int number = 0;
    const std::string name = target.filename();
    std::string end = "."; // one by one: for a sum g++ 12 warns of what cannot be
    end += std::to_string(getpid());
    end += '.';
    end += std::to_string(++number);
    end += ".part";
    const std::size_t room = std::max(name.size(), alwaysPossible) - end.size();
    return target.parent_path() / (CutShort(name, room) + end);
}

/// Gives the file @p path the permissions of @p former, which it is to replace, and as much of its
/// owner as the system allows.
void TakeAfter(const std::string& path, const struct stat& former) {
    if (chown(path.c_str(), former.st_uid, former.st_gid) != 0) {
        [[maybe_unused]] const int groupOnly =
            chown(path.c_str(), static_cast<uid_t>(-1), former.st_gid);
    }
    chmod(path.c_str(), former.st_mode & 0777U);
}

} // namespace

UnfinishedFile::UnfinishedFile(const std::string& finalPath) {
    std::error_code error;
    const fs::file_status status = fs::status(finalPath, error);
    if (!fs::status_known(status)) {
        throw std::system_error(error);
    }
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        // Renaming to it would replace a device by a file.
        throw std::runtime_error("not an ordinary file");
    }
    // If it is a symbolic link, its target is replaced.
    const fs::path followed = Followed(finalPath);
    const std::string beside = NameBeside(followed);
    // What it replaces may be private.
    const mode_t mode = fs::exists(status) ? 0600 : 0666;
    const int descriptor = open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category());
    }
    close(descriptor);
    target = followed;
    path = beside;
}

UnfinishedFile::~UnfinishedFile() {
    if (!path.empty()) {
        unlink(path.c_str());
    }
}

void UnfinishedFile::Commit() {
    struct stat former = {};
    if (stat(target.c_str(), &former) == 0) {
        TakeAfter(path, former);
    }
    if (std::rename(path.c_str(), target.c_str()) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    path.clear();
}

} // namespace record
