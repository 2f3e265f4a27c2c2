// Pictures that the browser has decoded, as textures.
#pragma once

namespace opengl {

/// The most pixels that a side of a texture may have; no limit before
/// there was a context.
unsigned int LargestTextureSide();

/// Makes what the browser decoded of the file @p path the image of the bound texture. False, with
/// the texture as it was: the browser could not decode it, or it is not @p width by @p height.
bool UploadBrowserPicture(const char* path, unsigned int width, unsigned int height);

} // namespace opengl
