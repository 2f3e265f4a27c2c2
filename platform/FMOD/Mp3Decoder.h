// MP3 file -> stereo frames at the file's own rate.
#pragma once

#include "File.h"

#include <FMOD/FMOD.h>

#include <memory>
#include <span>
#include <vector>

struct mpg123_handle_struct;

namespace sound {

/// Decodes one file from its beginning to its end. One thread at a time.
class Mp3Decoder {
public:
    enum class Progress { Frames, End, Failed };

    /// FMOD_ERR_FORMAT: not an MP3 file. Looks at a bounded number of bytes, however long the file.
    static FMOD_RESULT Open(std::unique_ptr<File> file, std::unique_ptr<Mp3Decoder>& decoder);

    int RateHz() const { return rateHz; }

    /// Frames: @p frames are the next of them (left, right; within -1..1), valid until the next
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

    Mp3Decoder(std::unique_ptr<File> openFile, off_t firstFrame);
    FMOD_RESULT Configure();
    FMOD_RESULT Begin();
    bool ReadFormat();

    static ssize_t ReadFile(void* decoder, void* bytes, std::size_t count);
    static off_t SeekFile(void* decoder, off_t offset, int whence);

    std::unique_ptr<File> file;
    off_t start; // of the first frame: the decoder never sees what is before it
    std::unique_ptr<mpg123_handle_struct, Delete> handle;
    int rateHz = 0;
    int frameRateHz = 0; // of the frame decoded last
    std::vector<float> output;
};

} // namespace sound
