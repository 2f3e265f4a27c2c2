#include "FirstFrame.h"

#include "Mp3Beginning.h"

#include <array>
#include <vector>

namespace sound {

static constexpr int mostTags = 8;

std::span<const unsigned char> ReadAt(File& file, off_t offset, std::span<unsigned char> buffer) {
    if (file.Seek(offset, SEEK_SET) != offset) {
        return {};
    }
    const ssize_t got = file.Read(buffer.data(), buffer.size());
    return buffer.first(got > 0 ? static_cast<std::size_t>(got) : 0);
}

// Where the audio may begin: after the tags, of which none is longer than the file.
static off_t SkipTags(File& file) {
    static constexpr off_t shortestTag = 10;
    std::array<unsigned char, tagHeadBytes> head = {};
    off_t offset = 0;
    for (int tags = 0; tags < mostTags; ++tags) {
        if (ReadAt(file, offset, head).size() < head.size()) {
            break;
        }
        const auto length = static_cast<off_t>(TagBytes(head));
        if (length == 0) {
            break;
        }
        offset += offset + length < file.Size() ? length : shortestTag;
    }
    return offset;
}

std::optional<off_t> FindFirstFrame(File& file) {
    std::vector<unsigned char> buffer(searchedBytes);
    const off_t from = SkipTags(file);
    const auto found = FindFirstMp3Frame(ReadAt(file, from, buffer));
    return found ? std::optional<off_t>(from + static_cast<off_t>(*found)) : std::nullopt;
}

} // namespace sound
