// The browser has decoded the picture; what it does not refuse as a whole is refused here.
#include "TextureImage.h"

#include "BrowserPicture.h"
#include "PictureFormat.h"

#include <GL/glpng.h>

#include <cstdio>
#include <memory>

namespace glpng {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

} // namespace

bool SetTextureImage(const char* filename, pngInfo& info) {
    const std::unique_ptr<std::FILE, FileCloser> file(
        filename != nullptr ? std::fopen(filename, "rb") : nullptr);
    PictureFormat format;
    if (file == nullptr || !ReadPictureFormat(file.get(), opengl::LargestTextureSide(), format) ||
        !opengl::UploadBrowserPicture(filename, format.width, format.height)) {
        return false;
    }
    info = {format.width, format.height, format.depth, format.hasAlpha ? 8U : 0U};
    return true;
}

} // namespace glpng
