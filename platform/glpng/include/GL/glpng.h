// Loads PNG files as OpenGL textures.
#pragma once

/// The properties of a PNG file.
struct pngInfo {
    unsigned int Width;  ///< pixels
    unsigned int Height; ///< pixels
    unsigned int Depth;  ///< bits a channel, as stored in the file
    unsigned int Alpha;  ///< bits of alpha uploaded: 8, or 0 when the file has none
};

inline constexpr int PNG_NOMIPMAPS = 0; ///< one level
inline constexpr int PNG_ALPHA = -2;    ///< the file's own alpha, where it has one

extern "C" {

/// Makes a new 2D texture from the PNG file @p filename, the file's first row at t = 0, and leaves
/// it bound. @p mipmap: PNG_NOMIPMAPS; @p transparency: PNG_ALPHA; @p info may be null.
/// Returns its name; 0 when the file cannot be opened, is damaged in anything that pixels depend on
/// (header, palette, transparency, pixels, end of the file), is larger than GL_MAX_TEXTURE_SIZE on
/// a side or has more than 256 MiB of decoded pixels: the name made for it then stays bound,
/// without an image. The rest of the file is neither read nor kept, whatever it says.
/// Needs a current OpenGL context.
unsigned int pngBind(const char* filename, int mipmap, int transparency, pngInfo* info,
                     int wrapMode, int minFilter, int magFilter);
}
