// MP3 file -> stereo frames at the file's own rate.
#pragma once

#include "Decoder.h"
#include "File.h"

#include <FMOD/FMOD.h>

#include <memory>
#include <span>

struct mpg123_handle_struct;

namespace sound {

/// Decodes one file from its beginning to its end. One thread at a time.
///
/// A file is a row of streams: each is frames of one rate of which each begins where the one before
/// ends. Where that breaks off, for damage, tags or another rate, the next stream is looked for.
class Mp3Decoder {
public:
    using Progress = Decoder::Progress;

    /// FMOD_ERR_FORMAT: not an MP3 file. Looks at a bounded number of bytes, however long the file.
    static FMOD_RESULT Open(std::unique_ptr<File> file, std::unique_ptr<Mp3Decoder>& decoder);

    /// Of the frames decoded last, or of the first before that; it may change in mid-file.
    int RateHz() const { return rateHz; }

    /// Frames: @p frames are the next of them (left, right; perhaps none), valid until the next
    /// call. What is damaged is left out. Failed: the file could not be read any further.
    Progress Decode(std::span<const float>& frames);

    /// Back to the beginning.
    FMOD_RESULT Rewind();

    /// Any thread: makes Decode, also one under way, come back soon.
    void Interrupt() { file->Interrupt(); }

private:
    struct Delete {
        void operator()(mpg123_handle_struct* owned) const;
    };

    explicit Mp3Decoder(std::unique_ptr<File> openFile);
    FMOD_RESULT Configure();
    bool BeginStream(off_t at);
    bool BeginNextStream();

    static ssize_t ReadFile(void* decoder, void* bytes, std::size_t count);
    static off_t SeekFile(void* decoder, off_t offset, int whence);

    std::unique_ptr<File> file;
    off_t fileBegin = 0;   // of the first frame in the file
    off_t streamBegin = 0; // of the stream being decoded, which is all that libmpg123 sees
    off_t latestFrame = 0; // where it began
    std::unique_ptr<mpg123_handle_struct, Delete> handle;
    int rateHz = 0;
};

} // namespace sound
