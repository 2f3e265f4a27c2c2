// OpenGL textures by key, read from the application's PNG resources.
#pragma once

#include "BaseEngine.h"

#include <GL/glpng.h>

#include <map>
#include <string>

namespace engine {

/// Needs a current OpenGL context. No texture is ever deleted. Main thread only.
class TextureManager : public BaseEngine {
public:
    /// Uploads PNG resource @p name (Mac Roman, no extension) as a new texture, repeated and
    /// filtered linearly, and leaves it bound. Returns its name, or 0 if it cannot be found or
    /// read.
    unsigned int LoadPNG(std::string name);

    /// Stores under @p key the texture of resource @p file (Mac Roman), or 0 if that fails. @p
    /// type: "png"; any other type reads no file and stores 0. An earlier texture of that key is
    /// not deleted.
    void LoadTexture(std::string file, std::string type, std::string key);

    /// Binds the texture stored under @p key; an unknown key is stored with 0 and binds 0.
    void GetTexture(std::string key);

    pngInfo info = {}; ///< of the file loaded last
    std::map<std::string, int> textures;
};

} // namespace engine
