#include "Mp3Decoder.h"

#include "FirstFrame.h"
#include "Mp3Header.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <vector>

#include <mpg123.h>

namespace sound {

// What libmpg123 may read to begin with a stream.
static constexpr std::size_t bytesToBegin = 65536;
// What may be read without any music in it: 16 MiB of the file, each byte of which is looked at
// twice.
static constexpr std::size_t bytesToGoOn = std::size_t{32} << 20;

// Damaged data contains false headers, but hardly ever this many in a row.
static constexpr int framesToGoOn = 4;

// For damaged frames libmpg123 returns samples from uninitialised memory: any value, even NaN. No
// music is that far above full scale.
static constexpr float loudestSample = 8.0F;

static void LeaveOutWhatIsNoSound(std::span<float> samples) {
    std::replace_if(
        samples.begin(), samples.end(),
        [](float sample) { return !(std::abs(sample) <= loudestSample); }, 0.0F);
}

FMOD_RESULT Mp3Decoder::Open(std::unique_ptr<File> file, std::unique_ptr<Mp3Decoder>& decoder) {
    const auto firstFrame = FindFirstFrame(*file);
    if (!firstFrame) {
        return file->Failed() ? FMOD_ERR_FILE_BAD : FMOD_ERR_FORMAT;
    }
    std::unique_ptr<Mp3Decoder> opened(new Mp3Decoder(std::move(file)));
    opened->fileBegin = *firstFrame;
    FMOD_RESULT result = opened->Configure();
    if (result == FMOD_OK) {
        result = opened->Rewind();
    }
    if (result == FMOD_OK) {
        decoder = std::move(opened);
    }
    return result;
}

Mp3Decoder::Mp3Decoder(std::unique_ptr<File> openFile)
    : file(std::move(openFile)), handle(mpg123_new(nullptr, nullptr)) {}

void Mp3Decoder::Delete::operator()(mpg123_handle_struct* owned) const {
    mpg123_delete(owned);
}

FMOD_RESULT Mp3Decoder::Configure() {
    // No resync by libmpg123: after damage it accepts every false header. No tags: it would keep
    // them, up to 256 MiB.
    constexpr long flags = MPG123_FORCE_FLOAT | MPG123_FORCE_STEREO | MPG123_GAPLESS |
                           MPG123_QUIET | MPG123_NO_RESYNC | MPG123_SKIP_ID3V2;
    if (handle == nullptr || mpg123_param(handle.get(), MPG123_FLAGS, flags, 0.0) != MPG123_OK ||
        mpg123_replace_reader_handle(handle.get(), ReadFile, SeekFile, nullptr) != MPG123_OK) {
        return FMOD_ERR_MEMORY;
    }
    return FMOD_OK;
}

FMOD_RESULT Mp3Decoder::Rewind() {
    file->Resume();
    file->Allow(bytesToBegin);
    const bool begun = BeginStream(fileBegin);
    file->Allow(bytesToGoOn);
    if (!begun) {
        return file->Failed() ? FMOD_ERR_FILE_BAD : FMOD_ERR_FORMAT;
    }
    return FMOD_OK;
}

bool Mp3Decoder::BeginStream(off_t at) {
    streamBegin = at;
    latestFrame = at;
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (file->Seek(at, SEEK_SET) != at || mpg123_open_handle(handle.get(), this) != MPG123_OK ||
        mpg123_getformat(handle.get(), &rate, &channels, &encoding) != MPG123_OK || channels != 2 ||
        encoding != MPG123_ENC_FLOAT_32) {
        return false;
    }
    rateHz = static_cast<int>(rate);
    return true;
}

// Searches from inside the latest frame, which damage may have made seem longer than it is.
bool Mp3Decoder::BeginNextStream() {
    std::vector<unsigned char> buffer(searchedBytes);
    off_t from = latestFrame + 1;
    for (;;) {
        const auto bytes = ReadAt(*file, from, buffer);
        if (const auto found = FindMp3Stream(bytes, framesToGoOn)) {
            from += static_cast<off_t>(*found);
            if (BeginStream(from)) {
                return true;
            }
            ++from;
        } else if (bytes.size() == buffer.size()) {
            from += static_cast<off_t>(searchedBytes / 2);
        } else {
            return false;
        }
    }
}

Mp3Decoder::Progress Mp3Decoder::Decode(std::span<const float>& frames) {
    for (;;) {
        off_t number = 0;
        unsigned char* audio = nullptr;
        std::size_t bytes = 0;
        const int result = mpg123_decode_frame(handle.get(), &number, &audio, &bytes);
        if (result == MPG123_OK) {
            latestFrame = streamBegin + mpg123_framepos(handle.get());
            const std::span samples(reinterpret_cast<float*>(audio), bytes / sizeof(float));
            LeaveOutWhatIsNoSound(samples);
            frames = samples;
            if (!samples.empty()) {
                file->Allow(bytesToGoOn);
            }
            return Progress::Frames;
        }
        if (file->Failed() || !BeginNextStream()) {
            return file->Failed() ? Progress::Failed : Progress::End;
        }
    }
}

ssize_t Mp3Decoder::ReadFile(void* decoder, void* bytes, std::size_t count) {
    return static_cast<Mp3Decoder*>(decoder)->file->Read(bytes, count);
}

off_t Mp3Decoder::SeekFile(void* decoder, off_t offset, int whence) {
    auto* self = static_cast<Mp3Decoder*>(decoder);
    const off_t absolute = whence == SEEK_SET ? self->streamBegin + offset : offset;
    const off_t reached = self->file->Seek(absolute, whence);
    return reached < 0 ? reached : reached - self->streamBegin;
}

} // namespace sound
