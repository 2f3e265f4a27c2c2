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
/// A file is a sequence of streams: contiguous frames of one sample rate. Where a stream ends, due
/// to damage, tags or another rate, the decoder searches for the next one: through 16 MiB, beyond
/// which the file counts as ended.
class Mp3Decoder {
public:
    using Progress = Decoder::Progress;

    /// FMOD_ERR_FORMAT: not an MP3 file. Reads a bounded number of bytes, however long the file is.
    static FMOD_RESULT Open(std::unique_ptr<File> file, std::unique_ptr<Mp3Decoder>& decoder);

    /// Of the frames decoded last, or of the first frames before any; may change within a file.
    int RateHz() const { return rateHz; }

    /// Frames: @p frames are the next ones (left, right; possibly none), valid until the next call.
    /// Damaged frames are skipped. Failed: the file could not be read any further.
    Progress Decode(std::span<const float>& frames);

    /// Back to the beginning; ends an interruption.
    FMOD_RESULT Rewind();

    /// Any thread: makes Decode return soon, also a call in progress, and later ones until Rewind.
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
