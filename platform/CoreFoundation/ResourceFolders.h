// Where a program's resources may be; each system has its own answer.
#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

/// Absolute paths, best first; none, and @p error says why, when the program's own is unknown.
std::vector<std::filesystem::path> ResourceFolders(std::error_code& error);
