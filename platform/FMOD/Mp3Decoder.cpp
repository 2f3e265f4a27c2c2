// MP3 file -> stereo frames at the file's own rate.
#include "Mp3Decoder.h"

#include "Mp3Header.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <optional>

#include <mpg123.h>

namespace sound {

static constexpr std::size_t searchedBytes = 65536;
static constexpr int mostTags = 8;
static constexpr int mostErrorsInARow = 16;

static std::span<const unsigned char> ReadAt(File& file, off_t offset,
                                             std::span<unsigned char> buffer) {
    if (file.Seek(offset, SEEK_SET) != offset) {
        return {};
    }
    const ssize_t got = file.Read(buffer.data(), buffer.size());
    return buffer.first(got > 0 ? static_cast<std::size_t>(got) : 0);
}

// Where the audio may begin: behind the tags, and no tag is longer than the file.
static off_t SkipTags(File& file) {
    std::array<unsigned char, 10> head = {};
    off_t offset = 0;
    for (int tags = 0; tags < mostTags; ++tags) {
        if (ReadAt(file, offset, head).size() < head.size()) {
            break;
        }
        const auto length = static_cast<off_t>(Id3TagBytes(head));
        if (length == 0) {
            break;
        }
        offset += offset + length < file.Size() ? length : static_cast<off_t>(head.size());
    }
    return offset;
}

static std::optional<off_t> FindFirstFrame(File& file) {
    std::vector<unsigned char> buffer(searchedBytes);
    const off_t from = SkipTags(file);
    const auto bytes = ReadAt(file, from, buffer);
    if (from == 0 && bytes.size() >= 4 && std::memcmp(bytes.data(), "RIFF", 4) == 0) {
        return std::nullopt; // other sound data may look like MP3 frames here and there
    }
    const auto found = FindMp3Stream(bytes);
    return found ? std::optional<off_t>(from + static_cast<off_t>(*found)) : std::nullopt;
}

FMOD_RESULT Mp3Decoder::Open(std::unique_ptr<File> file, std::unique_ptr<Mp3Decoder>& decoder) {
    const auto firstFrame = FindFirstFrame(*file);
    if (!firstFrame) {
        return file->Failed() ? FMOD_ERR_FILE_BAD : FMOD_ERR_FORMAT;
    }
    std::unique_ptr<Mp3Decoder> opened(new Mp3Decoder(std::move(file), *firstFrame));
    FMOD_RESULT result = opened->Configure();
    if (result == FMOD_OK) {
        result = opened->Begin();
    }
    if (result == FMOD_OK) {
        decoder = std::move(opened);
    }
    return result;
}

Mp3Decoder::Mp3Decoder(std::unique_ptr<File> openFile, off_t firstFrame)
    : file(std::move(openFile)), start(firstFrame), handle(mpg123_new(nullptr, nullptr)) {}

void Mp3Decoder::Delete::operator()(mpg123_handle_struct* owned) const {
    mpg123_delete(owned);
}

FMOD_RESULT Mp3Decoder::Configure() {
    constexpr long flags = MPG123_FORCE_FLOAT | MPG123_FORCE_STEREO | MPG123_GAPLESS |
                           MPG123_QUIET | MPG123_SKIP_ID3V2;
    if (handle == nullptr || mpg123_param(handle.get(), MPG123_FLAGS, flags, 0.0) != MPG123_OK ||
        mpg123_replace_reader_handle(handle.get(), ReadFile, SeekFile, nullptr) != MPG123_OK) {
        return FMOD_ERR_MEMORY;
    }
    return FMOD_OK;
}

FMOD_RESULT Mp3Decoder::Begin() {
    const bool opened = file->Seek(start, SEEK_SET) == start &&
                        mpg123_open_handle(handle.get(), this) == MPG123_OK && ReadFormat();
    if (!opened) {
        return file->Failed() ? FMOD_ERR_FILE_BAD : FMOD_ERR_FORMAT;
    }
    rateHz = frameRateHz;
    // Only now, for it must not widen the search for the first frame: damage of any length is
    // skipped.
    mpg123_param(handle.get(), MPG123_RESYNC_LIMIT, -1, 0.0);
    return FMOD_OK;
}

FMOD_RESULT Mp3Decoder::Rewind() {
    mpg123_close(handle.get());
    return Begin();
}

bool Mp3Decoder::ReadFormat() {
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (mpg123_getformat(handle.get(), &rate, &channels, &encoding) != MPG123_OK || channels != 2 ||
        encoding != MPG123_ENC_FLOAT_32) {
        return false;
    }
    frameRateHz = static_cast<int>(rate);
    return true;
}

static float Clamped(float sample) {
    if (sample != sample) {
        return 0.0F; // damaged frames can decode to no number at all
    }
    return std::clamp(sample, -1.0F, 1.0F);
}

Mp3Decoder::Progress Mp3Decoder::Decode(std::span<const float>& frames) {
    for (int errors = 0; errors < mostErrorsInARow;) {
        off_t number = 0;
        unsigned char* audio = nullptr;
        std::size_t bytes = 0;
        const int result = mpg123_decode_frame(handle.get(), &number, &audio, &bytes);
        if (result == MPG123_NEW_FORMAT) {
            errors += ReadFormat() ? 0 : 1;
        } else if (result == MPG123_OK) {
            // Damage can look like a frame of another rate: it is none of this music.
            if (bytes == 0 || frameRateHz != rateHz) {
                continue;
            }
            output.resize(bytes / sizeof(float));
            std::memcpy(output.data(), audio, bytes);
            std::transform(output.begin(), output.end(), output.begin(), Clamped);
            frames = output;
            return Progress::Frames;
        } else if (file->Failed()) {
            return Progress::Failed;
        } else if (result == MPG123_DONE) {
            return Progress::End;
        } else {
            ++errors;
        }
    }
    return Progress::End;
}

ssize_t Mp3Decoder::ReadFile(void* decoder, void* bytes, std::size_t count) {
    return static_cast<Mp3Decoder*>(decoder)->file->Read(bytes, count);
}

off_t Mp3Decoder::SeekFile(void* decoder, off_t offset, int whence) {
    auto* self = static_cast<Mp3Decoder*>(decoder);
    const off_t absolute = whence == SEEK_SET ? self->start + offset : offset;
    const off_t reached = self->file->Seek(absolute, whence);
    return reached < 0 ? reached : reached - self->start;
}

} // namespace sound
