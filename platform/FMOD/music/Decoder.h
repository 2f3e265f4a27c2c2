// The seam between the music and what decodes it.
#pragma once

#include <FMOD/FMOD.h>

#include <memory>
#include <vector>

namespace sound {

/// Decodes one file from its beginning to its end. One thread at a time.
class Decoder {
public:
    enum class Progress { Frames, End, Failed };

    /// Opens the file at @p path; defined by what the library is linked with. Answers as
    /// FMOD::System::createSound does. Throws std::bad_alloc when memory ran out.
    static FMOD_RESULT Open(const char* path, std::unique_ptr<Decoder>& decoder);

    Decoder() = default;
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    virtual ~Decoder() = default;

    /// Appends the next frames (left, right; perhaps none) at the output's rate to @p frames. End:
    /// these were the last. Failed: these, too, and the file could not be read any further. Throws
    /// std::bad_alloc when memory ran out.
    virtual Progress Read(std::vector<float>& frames) = 0;

    /// Back to the beginning; ends an interruption. Reads a bounded part of the file. Throws
    /// std::bad_alloc when memory ran out.
    virtual FMOD_RESULT Rewind() = 0;

    /// Any thread: makes Read, also one under way, come back soon with any answer, and every later
    /// one until Rewind.
    virtual void Interrupt() = 0;
};

} // namespace sound
