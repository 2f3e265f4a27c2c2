// Any bytes as a picture: pngBind uploads it whole or refuses it, in no more memory than it may.
#include "Expect.h"
#include "MemoryFile.h"
#include "PictureFormat.h"
#include "PngChunks.h"

#include <GL/gl.h>
#include <GL/glpng.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

using gltest::Bytes;
using gltest::PngChunk;

// Of the fuzzer and the sanitizer.
extern "C" {
std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t size, std::size_t maxSize);
int WatchAllocations(
    void (*allocated)(const volatile void*, std::size_t),
    void (*released)(const volatile void*)) __asm__("__sanitizer_install_malloc_and_free_hooks");
std::size_t AllocatedSize(const volatile void* block) __asm__("__sanitizer_get_allocated_size");
}

namespace {

// Larger than any whose pixels are to be taken, so that those that are not are met.
constexpr GLint maxSide = 16384;
constexpr GLuint textureName = 7;
constexpr std::size_t maxPixelBytes = std::size_t{256} << 20;
constexpr std::size_t maxOtherBytes = std::size_t{16} << 20;

GLsizei uploadedWidth = 0;
GLsizei uploadedHeight = 0;
GLenum uploadedFormat = 0;
std::uint32_t checksum = 0;

// libpng is not watched by the fuzzer. So that pictures of all kinds are kept and changed further,
// each depth, format and size taken counts as something new: libFuzzer reads this section.
[[gnu::section("__libfuzzer_extra_counters"),
  gnu::used]] std::array<std::uint8_t, std::size_t{32} * 16 * 16> kindsTaken;

std::size_t Magnitude(GLsizei side) {
    return std::bit_width(static_cast<unsigned int>(side)) % 16;
}

std::atomic<std::size_t> allocatedBytes = 0;
std::atomic<std::size_t> mostAllocatedBytes = 0;

void NoteAllocation(const volatile void*, std::size_t size) {
    allocatedBytes += size;
    mostAllocatedBytes = std::max<std::size_t>(mostAllocatedBytes, allocatedBytes);
}

void NoteRelease(const volatile void* block) {
    allocatedBytes -= AllocatedSize(block);
}

const bool watched = WatchAllocations(NoteAllocation, NoteRelease) > 0;

// What the pixels of the file may take, by its header.
std::size_t PixelBytes(const std::uint8_t* bytes, std::size_t size) {
    if (size < 24) {
        return 0;
    }
    const std::size_t width = png_get_uint_32(bytes + 16);
    const std::size_t height = png_get_uint_32(bytes + 20);
    return width <= maxSide && height <= maxSide ? std::min(4 * width * height, maxPixelBytes) : 0;
}

using Random = std::minstd_rand;

std::size_t Below(std::size_t limit, Random& random) {
    return random() % limit;
}

std::string AnyName(Random& random) {
    static const std::vector<std::string> names = {
        "IHDR", "PLTE", "IDAT", "IEND", "tRNS", "bKGD", "cHRM", "eXIf", "gAMA",
        "hIST", "iCCP", "iTXt", "oFFs", "pCAL", "pHYs", "sBIT", "sCAL", "sPLT",
        "sRGB", "sTER", "tEXt", "tIME", "zTXt", "abCd", "ABCD"};
    return names[Below(names.size(), random)];
}

std::uint32_t AnyLength(Random& random) {
    return static_cast<std::uint32_t>(random()) >> Below(32, random);
}

} // namespace

static void Mutate(Bytes& bytes) {
    const std::size_t size = bytes.size();
    bytes.resize(size + 64);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
}

// Changes one of @p chunks, not empty, or where it is.
static void Mutate(std::vector<PngChunk>& chunks, Random& random) {
    const auto chunk = chunks.begin() + static_cast<std::ptrdiff_t>(Below(chunks.size(), random));
    const auto other = chunks.begin() + static_cast<std::ptrdiff_t>(Below(chunks.size(), random));
    switch (Below(10, random)) {
    case 0:
        chunk->name = AnyName(random);
        break;
    case 1:
        chunk->claimedLength = AnyLength(random);
        break;
    case 2:
        chunk->checksumIsWrong = true;
        break;
    case 3:
        chunks.erase(chunk);
        break;
    case 4:
        std::swap(*chunk, *other);
        break;
    case 5:
        chunks.insert(other, PngChunk(*chunk));
        break;
    case 6:
        chunks.insert(other, {.name = AnyName(random), .claimedLength = AnyLength(random)});
        break;
    default:
        Mutate(chunk->data);
    }
}

extern "C" {

void glGenTextures(GLsizei count, GLuint* names) {
    EXPECT(count == 1);
    *names = textureName;
}

void glBindTexture(GLenum, GLuint) {}
void glTexParameteri(GLenum, GLenum, GLint) {}
void glPushClientAttrib(GLbitfield) {}
void glPopClientAttrib() {}
void glPixelStorei(GLenum, GLint) {}

void glGetIntegerv(GLenum, GLint* value) {
    *value = maxSide;
}

void glGetTexLevelParameteriv(GLenum, GLint, GLenum, GLint* value) {
    *value = uploadedWidth;
}

// Looks at every byte, as a driver does: what is missing is found by the sanitizer.
void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    EXPECT(width > 0 && width <= maxSide && height > 0 && height <= maxSide);
    EXPECT(format == GL_RGB || format == GL_RGBA);
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                              (format == GL_RGBA ? 4U : 3U);
    EXPECT(bytes <= maxPixelBytes);
    const auto* first = static_cast<const std::uint8_t*>(pixels);
    std::for_each(first, first + bytes, [](std::uint8_t byte) { checksum = 31 * checksum + byte; });
    uploadedWidth = width;
    uploadedHeight = height;
    uploadedFormat = format;
}
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size,
                                               std::size_t maxSize, unsigned int seed);

// By chunks, whose checksums fit: bytes changed at random would nearly always end at a checksum.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size,
                                               std::size_t maxSize, unsigned int seed) {
    Random random(seed);
    std::vector<PngChunk> chunks = gltest::ChunksOf(Bytes(bytes, bytes + size));
    if (chunks.empty() || Below(16, random) == 0) {
        return LLVMFuzzerMutate(bytes, size, maxSize);
    }
    for (PngChunk& chunk : chunks) {
        chunk.checksumIsWrong = false;
    }
    Mutate(chunks, random);
    const Bytes file = gltest::FileOf(chunks);
    if (file.size() > maxSize) {
        return LLVMFuzzerMutate(bytes, size, maxSize);
    }
    std::copy(file.begin(), file.end(), bytes);
    return file.size();
}

// What is decoded here a page takes from the browser.
static void ExpectAcceptedByAPage(const char* path, bool isDecoded, const pngInfo& info) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), std::fclose);
    glpng::PictureFormat format;
    const bool isAccepted = glpng::ReadPictureFormat(file.get(), maxSide, format);
    EXPECT(!isDecoded ||
           (isAccepted && format.width == info.Width && format.height == info.Height &&
            format.depth == info.Depth && format.hasAlpha == (info.Alpha > 0)));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    uploadedWidth = 0;
    uploadedHeight = 0;
    uploadedFormat = 0;
    const fuzz::MemoryFile file(bytes, size);
    pngInfo info = {};
    EXPECT(watched);
    const std::size_t before = allocatedBytes;
    mostAllocatedBytes = before;
    const unsigned int name =
        pngBind(file.Path(), PNG_NOMIPMAPS, PNG_ALPHA, &info, GL_REPEAT, GL_LINEAR, GL_LINEAR);
    EXPECT(mostAllocatedBytes - before <= PixelBytes(bytes, size) + maxOtherBytes);
    EXPECT(name == (uploadedWidth > 0 ? textureName : 0));
    EXPECT(info.Width == static_cast<unsigned int>(uploadedWidth));
    EXPECT(info.Height == static_cast<unsigned int>(uploadedHeight));
    EXPECT(info.Alpha == (uploadedFormat == GL_RGBA ? 8 : 0));
    EXPECT(name != 0 ? std::has_single_bit(info.Depth) && info.Depth <= 16 : info.Depth == 0);
    ExpectAcceptedByAPage(file.Path(), name != 0, info);
    if (name != 0) {
        const std::size_t kind = (info.Alpha == 0 ? 0U : 16U) + info.Depth % 16;
        kindsTaken[(kind * 16 + Magnitude(uploadedWidth)) * 16 + Magnitude(uploadedHeight)] = 1;
    }
    return 0;
}
