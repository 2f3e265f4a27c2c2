// Where a program's resources are; each system has its own answer.
#pragma once

#include <filesystem>

/// An absolute path; empty when there is no such folder.
std::filesystem::path ResourceFolder();
