// A pipe to another program.
#pragma once

#include <cstddef>
#include <optional>

namespace record {

class Pipe {
public:
    /// Child processes inherit neither end unless it is passed to them explicitly.
    /// Throws std::system_error.
    Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe();

    int ReadingEnd() const { return readingEnd; }
    int WritingEnd() const { return writingEnd; }

    void CloseReadingEnd() { Close(readingEnd); }
    void CloseWritingEnd() { Close(writingEnd); }

    /// Writes as much as fits without blocking; returns the number of bytes, or nothing when the
    /// reader is gone.
    std::optional<std::size_t> Write(const void* bytes, std::size_t count) const;

private:
    static void Close(int& descriptor);

    int readingEnd = -1; // -1: closed
    int writingEnd = -1;
};

} // namespace record
