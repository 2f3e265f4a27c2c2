// MP3 file -> stereo frames at the output's rate.
#include "Decoder.h"

#include "Mp3Decoder.h"
#include "Output.h"
#include "Resampler.h"

#include <optional>
#include <span>

namespace sound {

namespace {

class ResampledMp3 final : public Decoder {
public:
    explicit ResampledMp3(std::unique_ptr<Mp3Decoder> openDecoder)
        : decoder(std::move(openDecoder)) {
        Begin();
    }

    Progress Read(std::vector<float>& frames) override;
    FMOD_RESULT Rewind() override;
    void Interrupt() override { decoder->Interrupt(); }

private:
    void Begin();
    void ChangeRate(int nextRateHz, std::vector<float>& frames);

    std::unique_ptr<Mp3Decoder> decoder;
    std::optional<Resampler> resampler; // none: the decoder has the output's rate
    int rateHz = outputRateHz;          // of the decoder
};

void ResampledMp3::Begin() {
    resampler.reset();
    rateHz = decoder->RateHz();
    if (rateHz != outputRateHz) {
        resampler.emplace(rateHz);
    }
}

FMOD_RESULT ResampledMp3::Rewind() {
    const FMOD_RESULT result = decoder->Rewind();
    if (result == FMOD_OK) {
        Begin();
    }
    return result;
}

Decoder::Progress ResampledMp3::Read(std::vector<float>& frames) {
    std::span<const float> decoded;
    const Progress progress = decoder->Decode(decoded);
    const int nextRateHz = progress == Progress::Frames ? decoder->RateHz() : outputRateHz;
    if (nextRateHz != rateHz) {
        ChangeRate(nextRateHz, frames);
    }
    if (resampler) {
        resampler->Process(decoded, frames);
    } else {
        frames.insert(frames.end(), decoded.begin(), decoded.end());
    }
    return progress;
}

// After the remaining frames of the previous rate.
void ResampledMp3::ChangeRate(int nextRateHz, std::vector<float>& frames) {
    if (resampler) {
        resampler->Finish(frames);
        resampler.reset();
    }
    if (nextRateHz != outputRateHz) {
        resampler.emplace(nextRateHz);
    }
    rateHz = nextRateHz;
}

} // namespace

FMOD_RESULT Decoder::Open(const char* path, std::unique_ptr<Decoder>& decoder) {
    std::unique_ptr<File> file;
    FMOD_RESULT result = File::Open(path, file);
    std::unique_ptr<Mp3Decoder> opened;
    if (result == FMOD_OK) {
        result = Mp3Decoder::Open(std::move(file), opened);
    }
    if (result == FMOD_OK) {
        decoder = std::make_unique<ResampledMp3>(std::move(opened));
    }
    return result;
}

} // namespace sound
