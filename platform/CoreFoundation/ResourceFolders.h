// Where a program's resources may be; each system has its own answer.
#pragma once

#include <filesystem>
#include <vector>

/// Absolute paths, best first; none when the program's own path is unknown.
std::vector<std::filesystem::path> ResourceFolders();
