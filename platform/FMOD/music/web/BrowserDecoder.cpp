// MP3 file -> stereo frames at the output's rate, by the browser.
#include "BrowserDecoder.h"

#include "Decoder.h"
#include "File.h"
#include "FirstFrame.h"
#include "Output.h"

#include <algorithm>
#include <cstddef>

namespace sound {

namespace {

constexpr std::int32_t stepFrames = 4096;

class BrowserDecoder final : public Decoder {
public:
    explicit BrowserDecoder(std::span<const unsigned char> bytes)
        : music(SkovraMusicBegin(bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                                 outputRateHz)) {}
    ~BrowserDecoder() override { SkovraMusicForget(music); }

    Progress Read(std::vector<float>& frames) override;

    FMOD_RESULT Rewind() override {
        next = 0;
        return FMOD_OK;
    }

    void Interrupt() override {} // Read never takes long

private:
    int music;
    std::int32_t next = 0;
};

Decoder::Progress BrowserDecoder::Read(std::vector<float>& frames) {
    const std::int32_t all = SkovraMusicFrames(music);
    if (all < 0) {
        return all == -1 ? Progress::Frames : Progress::Failed;
    }
    const std::int32_t count = std::min(stepFrames, all - next);
    const std::size_t before = frames.size();
    frames.resize(before + 2 * static_cast<std::size_t>(count));
    SkovraMusicCopy(music, next, count, frames.data() + before);
    next += count;
    return next < all ? Progress::Frames : Progress::End;
}

} // namespace

// Only what follows the tags goes to the browser, which may not find the music behind long ones.
FMOD_RESULT Decoder::Open(const char* path, std::unique_ptr<Decoder>& decoder) {
    std::unique_ptr<File> file;
    if (const FMOD_RESULT result = File::Open(path, file); result != FMOD_OK) {
        return result;
    }
    const auto begin = FindFirstFrame(*file);
    if (!begin) {
        return file->Failed() ? FMOD_ERR_FILE_BAD : FMOD_ERR_FORMAT;
    }
    std::vector<unsigned char> bytes(static_cast<std::size_t>(file->Size() - *begin));
    const auto read = ReadAt(*file, *begin, bytes);
    if (file->Failed()) {
        return FMOD_ERR_FILE_BAD;
    }
    decoder = std::make_unique<BrowserDecoder>(read);
    return FMOD_OK;
}

} // namespace sound
