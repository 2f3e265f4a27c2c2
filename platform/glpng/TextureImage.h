// What each system does of pngBind: the file's pixels as the texture's.
#pragma once

#include <cstddef>

struct pngInfo;

namespace glpng {

/// The limit for the decoded pixels of one picture.
inline constexpr std::size_t maxPixelBytes = std::size_t{256} << 20;

/// Makes the PNG file @p filename, which may be null, the image of the bound texture and describes
/// it in @p info. False, with the texture without an image: see pngBind.
bool SetTextureImage(const char* filename, pngInfo& info);

} // namespace glpng
