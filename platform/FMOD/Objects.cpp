#include "Objects.h"

#include <algorithm>

namespace sound {

// For the first frames to be decoded.
static constexpr std::chrono::milliseconds startLimit{10};

static void Render(void* mixer, float* block, std::int32_t frames) noexcept {
    static_cast<Mixer*>(mixer)->Render(block, frames);
}

static void WaitUntilReady(void* mixer, std::int32_t frames) noexcept {
    static_cast<Mixer*>(mixer)->WaitUntilReady(frames);
}

// Where the output's clock ran ahead of the frames requested, a pause or the end in between was not
// known yet.
MusicTime::Moment ChannelObject::Heard() {
    MusicTime::Moment moment = voice->At(HeardFrames(*system.output));
    latestFrame = std::max(latestFrame, moment.musicFrame);
    moment.musicFrame = latestFrame;
    return moment;
}

void SystemObject::Open(std::size_t channelCount) {
    auto newMixer = std::make_unique<Mixer>(channelCount);
    std::vector<std::unique_ptr<ChannelObject>> newChannels;
    newChannels.reserve(channelCount);
    for (std::size_t slot = 0; slot < channelCount; ++slot) {
        newChannels.push_back(std::make_unique<ChannelObject>(*this, slot));
    }
    output = StartOutput({newMixer.get(), Render, WaitUntilReady});
    mixer = std::move(newMixer);
    channels = std::move(newChannels);
}

void SystemObject::Close() {
    output.reset();
    channels.clear();
    sounds.clear();
    mixer.reset();
}

FMOD_RESULT SystemObject::AddSound(const char* path, SoundObject*& sound) {
    std::unique_ptr<Stream> stream;
    const FMOD_RESULT result = Stream::Open(path, stream);
    if (result == FMOD_OK) {
        sounds.push_back(std::make_unique<SoundObject>(*this, std::move(stream)));
        sound = sounds.back().get();
    }
    return result;
}

void SystemObject::RemoveSound(SoundObject& sound) {
    Silence(sound);
    std::erase_if(sounds, [&sound](const auto& other) { return other.get() == &sound; });
}

// A stream has one reader: stops it wherever it is playing.
void SystemObject::Silence(const SoundObject& sound) {
    for (const auto& channel : channels) {
        if (channel->sound == &sound) {
            mixer->Play(channel->slot, nullptr);
            channel->voice.reset();
            channel->sound = nullptr;
        }
    }
}

FMOD_RESULT SystemObject::Play(SoundObject& sound, bool paused, ChannelObject& channel) {
    auto voice = std::make_unique<Voice>(*sound.stream, paused);
    AwaitDevice(*output);
    Silence(sound);
    if (sound.played) {
        if (const FMOD_RESULT result = sound.stream->Rewind(); result != FMOD_OK) {
            return result;
        }
    }
    sound.played = true;
    sound.stream->WaitUntilReady(Voice::startFrames, startLimit);
    mixer->Play(channel.slot, voice.get());
    channel.voice = std::move(voice);
    channel.latestFrame = 0;
    channel.sound = &sound;
    return FMOD_OK;
}

// A channel is free if its sound was released or is over. If none is, the first is reused.
ChannelObject* SystemObject::FindChannel(int index) {
    if (index != FMOD_CHANNEL_FREE) {
        const bool exists = index >= 0 && static_cast<std::size_t>(index) < channels.size();
        return exists ? channels[static_cast<std::size_t>(index)].get() : nullptr;
    }
    for (const auto& channel : channels) {
        if (channel->voice == nullptr || MusicTime::IsOver(channel->Heard().state)) {
            return channel.get();
        }
    }
    return channels.front().get();
}

bool SystemObject::Owns(const FMOD::Sound* sound) const {
    return std::any_of(sounds.begin(), sounds.end(),
                       [sound](const auto& owned) { return owned.get() == sound; });
}

} // namespace sound
