// A page puts its resources into one folder before the program starts.
#include "ResourceFolders.h"

std::vector<std::filesystem::path> ResourceFolders(std::error_code& /*error*/) {
    return {"/resources"};
}
