// A program's resources are near its executable.
#include "ResourceFolders.h"

#include <string>

std::vector<std::filesystem::path> ResourceFolders(std::error_code& error) {
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    const auto folder = executable.parent_path();
    const auto shared = folder.parent_path() / "share";
    const auto name = executable.filename().string();
    std::vector<std::filesystem::path> folders = {folder / "resources", shared / name};
    // Related programs share their resources: skovra-record uses skovra's.
    if (const auto hyphen = name.find('-'); hyphen != std::string::npos && hyphen > 0) {
        folders.push_back(shared / name.substr(0, hyphen));
    }
    return folders;
}
