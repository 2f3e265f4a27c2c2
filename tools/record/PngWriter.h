// Writes a picture as a PNG file.
#pragma once

#include <string>

namespace record {

struct Picture;

/// Writes @p picture to the file @p path. Throws std::runtime_error, without the path in its text.
void WritePng(const Picture& picture, const std::string& path);

} // namespace record
