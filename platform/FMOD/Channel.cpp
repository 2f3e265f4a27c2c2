// FMOD::Channel: argument checks and result codes.
#include "Objects.h"

#include <algorithm>
#include <cmath>

namespace FMOD {

using sound::ChannelObject;
using sound::MusicTime;

FMOD_RESULT Channel::setVolume(float volume) {
    auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    if (std::isnan(volume)) {
        return FMOD_ERR_INVALID_PARAM;
    }
    self.voice->SetVolume(std::clamp(volume, 0.0F, 1.0F));
    return FMOD_OK;
}

FMOD_RESULT Channel::setMute(bool mute) {
    auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    self.voice->SetMute(mute);
    return FMOD_OK;
}

FMOD_RESULT Channel::getMute(bool* mute) {
    const auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    if (mute == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    *mute = self.voice->IsMute();
    return FMOD_OK;
}

FMOD_RESULT Channel::setPaused(bool paused) {
    auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    self.voice->SetPaused(paused);
    return FMOD_OK;
}

FMOD_RESULT Channel::getPaused(bool* paused) {
    const auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    if (paused == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    *paused = self.voice->IsPaused();
    return FMOD_OK;
}

FMOD_RESULT Channel::isPlaying(bool* playing) {
    auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    if (playing == nullptr) {
        return FMOD_ERR_INVALID_PARAM;
    }
    const MusicTime::Moment heard = self.Heard();
    *playing = !MusicTime::IsOver(heard.state);
    return heard.state == MusicTime::State::Broken ? FMOD_ERR_FILE_BAD : FMOD_OK;
}

FMOD_RESULT Channel::getPosition(unsigned int* position, FMOD_TIMEUNIT unit) {
    auto& self = ChannelObject::Of(*this);
    if (self.voice == nullptr) {
        return FMOD_ERR_INVALID_HANDLE;
    }
    if (position == nullptr || unit != FMOD_TIMEUNIT_MS) {
        return FMOD_ERR_INVALID_PARAM;
    }
    const MusicTime::Moment heard = self.Heard();
    // To the nearest: rounded down, the clock would be half a millisecond late on average.
    *position = static_cast<unsigned int>((heard.musicFrame * 1000 + sound::outputRateHz / 2) /
                                          sound::outputRateHz);
    return heard.state == MusicTime::State::Broken ? FMOD_ERR_FILE_BAD : FMOD_OK;
}

} // namespace FMOD
