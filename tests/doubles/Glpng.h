// A double of the PNG loader; a script says which files load.
#pragma once

#include <GL/glpng.h>

#include <set>
#include <string>

namespace doubles {

struct GlpngScript {
    unsigned int nextName = 1;      ///< the next texture name; each load makes one
    std::set<std::string> corrupt;  ///< paths of files that do not load; nor does an empty path
    pngInfo info = {256, 64, 8, 8}; ///< of every file
};

extern GlpngScript glpng;

} // namespace doubles
