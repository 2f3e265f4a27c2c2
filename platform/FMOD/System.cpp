// FMOD::System: argument checks and result codes.
#include "Objects.h"

#include <algorithm>
#include <new>
#include <system_error>

namespace FMOD {

using sound::ChannelObject;
using sound::SoundObject;
using sound::Spectrum;
using sound::SystemObject;

static constexpr int mostChannels = 64;
static constexpr FMOD_MODE knownModes = FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM;

// Runs @p operation; turns running out of memory or threads into a result code.
template <typename Operation>
static FMOD_RESULT Guarded(Operation operation) noexcept {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return FMOD_ERR_MEMORY;
    } catch (const std::system_error&) {
        return FMOD_ERR_MEMORY;
    }
}

FMOD_RESULT System_Create(System** system) {
    if (system == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    return Guarded([system] {
        *system = new SystemObject();
        return FMOD_OK;
    });
}

FMOD_RESULT System::release() {
    delete &SystemObject::Of(*this);
    return FMOD_OK;
}

FMOD_RESULT System::init(int maxChannels, FMOD_INITFLAGS flags, void* extraDriverData) {
    auto& self = SystemObject::Of(*this);
    if (self.IsOpen()) {
        return FMOD_ERR_INITIALIZED;
    }
    if (maxChannels < 1 || maxChannels > mostChannels || flags != FMOD_INIT_NORMAL ||
        extraDriverData != nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    return Guarded([&self, maxChannels] {
        self.Open(static_cast<std::size_t>(maxChannels));
        return FMOD_OK;
    });
}

FMOD_RESULT System::close() {
    SystemObject::Of(*this).Close();
    return FMOD_OK;
}

FMOD_RESULT System::update() {
    return SystemObject::Of(*this).IsOpen() ? FMOD_OK : FMOD_ERR_UNINITIALIZED;
}

FMOD_RESULT System::getVersion(unsigned int* version) {
    if (version == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    *version = FMOD_VERSION;
    return FMOD_OK;
}

FMOD_RESULT System::createSound(const char* path, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO* exInfo,
                                Sound** sound) {
    auto& self = SystemObject::Of(*this);
    if (!self.IsOpen()) {
        return FMOD_ERR_UNINITIALIZED;
    }
    if (path == nullptr || (mode & ~knownModes) != 0 || exInfo != nullptr || sound == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    return Guarded([&self, path, sound] {
        SoundObject* opened = nullptr;
        const FMOD_RESULT result = self.AddSound(path, opened);
        if (result == FMOD_OK) {
            *sound = opened;
        }
        return result;
    });
}

FMOD_RESULT System::playSound(FMOD_CHANNELINDEX index, Sound* sound, bool paused,
                              Channel** channel) {
    auto& self = SystemObject::Of(*this);
    if (!self.IsOpen()) {
        return FMOD_ERR_UNINITIALIZED;
    }
    if (sound == nullptr || !self.Owns(sound) || channel == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    ChannelObject* free = self.FindChannel(index);
    if (free == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    return Guarded([&self, sound, paused, channel, free] {
        const FMOD_RESULT result = self.Play(SoundObject::Of(*sound), paused, *free);
        if (result == FMOD_OK) {
            *channel = free;
        }
        return result;
    });
}

FMOD_RESULT System::getSpectrum(float* spectrum, int numValues, int channelOffset,
                                FMOD_DSP_FFT_WINDOW window) {
    auto& self = SystemObject::Of(*this);
    if (!self.IsOpen()) {
        return FMOD_ERR_UNINITIALIZED;
    }
    const bool knownWindow =
        window == FMOD_DSP_FFT_WINDOW_RECT || window == FMOD_DSP_FFT_WINDOW_TRIANGLE;
    if (spectrum == nullptr || !Spectrum::CanAnalyse(numValues) || channelOffset < 0 ||
        channelOffset > 1 || !knownWindow) {
        return FMOD_ERR_INVALID_PARAM;
    }
    return Guarded([&] {
        float* samples = self.spectrum.SamplesFor(numValues);
        self.mixer->CopyMix(HeardFrames(*self.output), channelOffset, samples, 2 * numValues);
        self.spectrum.Analyse(window, spectrum);
        return FMOD_OK;
    });
}

} // namespace FMOD
