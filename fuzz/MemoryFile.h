// A file in memory, for interfaces that take a path.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// Exists as long as the object.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* bytes, std::size_t size);
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    const char* Path() const { return path.c_str(); }

private:
    int descriptor;
    std::string path;
};

} // namespace fuzz
