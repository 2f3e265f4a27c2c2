// A program's resources are near its executable.
#include "ResourceFolder.h"

#include <system_error>

std::filesystem::path ResourceFolder() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    const auto folder = executable.parent_path();
    for (const auto& candidate :
         {folder / "resources", folder.parent_path() / "share" / "skovra"}) {
        if (std::filesystem::is_directory(candidate, error)) {
            return candidate;
        }
    }
    return {};
}
