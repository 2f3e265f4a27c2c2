// The implementations behind the public interface.
#pragma once

#include "Mixer.h"
#include "Output.h"
#include "Spectrum.h"
#include "Stream.h"
#include "Voice.h"

#include <FMOD/FMOD.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace sound {

class SystemObject;

class SoundObject final : public FMOD::Sound {
public:
    SoundObject(SystemObject& owner, std::unique_ptr<Stream> openStream)
        : system(owner), stream(std::move(openStream)) {}

    static SoundObject& Of(FMOD::Sound& sound) { return static_cast<SoundObject&>(sound); }

    SystemObject& system;
    std::unique_ptr<Stream> stream;
    bool played = false; ///< its stream is no longer at the beginning
};

/// A channel lives as long as the system; what it plays changes.
class ChannelObject final : public FMOD::Channel {
public:
    ChannelObject(SystemObject& owner, std::size_t number) : system(owner), slot(number) {}

    static ChannelObject& Of(FMOD::Channel& channel) {
        return static_cast<ChannelObject&>(channel);
    }

    /// The music heard now; never goes backwards. Only while it has a voice.
    MusicTime::Moment Heard();

    SystemObject& system;
    std::size_t slot;
    SoundObject* sound = nullptr;
    std::unique_ptr<Voice> voice; ///< none: its sound was released, or nothing was played yet
    std::int64_t latestFrame = 0; ///< of the music, that Heard returned for this voice
};

class SystemObject final : public FMOD::System {
public:
    static SystemObject& Of(FMOD::System& system) { return static_cast<SystemObject&>(system); }

    ~SystemObject() { Close(); }

    bool IsOpen() const { return output != nullptr; }

    /// These three throw std::bad_alloc or std::system_error when out of memory or threads.
    void Open(std::size_t channelCount);
    FMOD_RESULT Play(SoundObject& sound, bool paused, ChannelObject& channel);
    FMOD_RESULT AddSound(const char* path, SoundObject*& sound);

    void Close();
    void RemoveSound(SoundObject& sound);
    ChannelObject* FindChannel(int index);
    bool Owns(const FMOD::Sound* sound) const;

    std::unique_ptr<Mixer> mixer;
    std::vector<std::unique_ptr<SoundObject>> sounds;
    std::vector<std::unique_ptr<ChannelObject>> channels;
    Spectrum spectrum;
    OutputHandle output; ///< none: not initialised. Last, because it uses the mixer

private:
    void Silence(const SoundObject& sound);
};

} // namespace sound
