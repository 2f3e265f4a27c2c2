#include "Fmod.h"

#include "Effects.h"

#include <algorithm>
#include <cstddef>

namespace doubles {

FmodScript fmod;

namespace {

// Never looked into: only their addresses tell them apart.
alignas(std::max_align_t) std::byte systemPlace[1];
alignas(std::max_align_t) std::byte soundPlace[1];
alignas(std::max_align_t) std::byte channelPlace[1];

FMOD_RESULT Result(const std::string& operation) {
    const auto result = fmod.results.find(operation);
    return result == fmod.results.end() ? FMOD_OK : result->second;
}

/// Records a call on the one object there is of a class; any other is marked.
template <typename... Arguments>
FMOD_RESULT Call(const std::string& operation, const void* object, const std::byte* place,
                 const Arguments&... arguments) {
    Record(object == place ? operation : "STRAY OBJECT " + operation, arguments...);
    return Result(operation);
}

/// Hands @p value over if the operation succeeded.
template <typename Value>
FMOD_RESULT Answer(FMOD_RESULT result, Value& place, const Value& value) {
    if (result == FMOD_OK) {
        place = value;
    }
    return result;
}

template <typename Value>
Value Next(std::deque<Value>& sequence) {
    const Value value = sequence.front();
    if (sequence.size() > 1) {
        sequence.pop_front();
    }
    return value;
}

Word Mode(FMOD_MODE mode) {
    return {mode == (FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D)
                ? "FMOD_CREATESTREAM | FMOD_SOFTWARE | FMOD_2D"
                : std::to_string(mode)};
}

Word Pointer(const void* pointer, const std::byte* place, const char* name) {
    return {pointer == nullptr ? "null" : pointer == place ? name : "stray"};
}

} // namespace

} // namespace doubles

namespace FMOD {

using namespace doubles;

FMOD_RESULT System_Create(System** system) {
    Record("FMOD::System_Create");
    const FMOD_RESULT result = Result("FMOD::System_Create");
    if (result == FMOD_OK) {
        *system = reinterpret_cast<System*>(systemPlace);
    }
    return result;
}

FMOD_RESULT System::release() {
    return Call("FMOD::System::release", this, systemPlace);
}

FMOD_RESULT System::init(int maxChannels, FMOD_INITFLAGS flags, void* extraDriverData) {
    return Call("FMOD::System::init", this, systemPlace, maxChannels, flags,
                Pointer(extraDriverData, nullptr, ""));
}

FMOD_RESULT System::close() {
    return Call("FMOD::System::close", this, systemPlace);
}

FMOD_RESULT System::update() {
    return Call("FMOD::System::update", this, systemPlace);
}

FMOD_RESULT System::getVersion(unsigned int* version) {
    return Answer(Call("FMOD::System::getVersion", this, systemPlace), *version,
                  doubles::fmod.version);
}

FMOD_RESULT System::createSound(const char* path, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO* exInfo,
                                Sound** sound) {
    FMOD_RESULT result = Call("FMOD::System::createSound", this, systemPlace, path, Mode(mode),
                              Pointer(exInfo, nullptr, ""));
    if (result == FMOD_OK && *path == '\0') {
        result = FMOD_ERR_FILE_NOTFOUND;
    }
    if (result == FMOD_OK) {
        *sound = reinterpret_cast<Sound*>(soundPlace);
    }
    return result;
}

FMOD_RESULT System::playSound(FMOD_CHANNELINDEX index, Sound* sound, bool paused,
                              Channel** channel) {
    return Answer(
        Call("FMOD::System::playSound", this, systemPlace,
             Word{index == FMOD_CHANNEL_FREE ? "FMOD_CHANNEL_FREE" : std::to_string(index)},
             Pointer(sound, soundPlace, "sound"), paused),
        *channel, reinterpret_cast<Channel*>(channelPlace));
}

FMOD_RESULT System::getSpectrum(float* spectrum, int numValues, int channelOffset,
                                FMOD_DSP_FFT_WINDOW window) {
    const FMOD_RESULT result =
        Call("FMOD::System::getSpectrum", this, systemPlace, numValues, channelOffset,
             Word{window == FMOD_DSP_FFT_WINDOW_TRIANGLE ? "FMOD_DSP_FFT_WINDOW_TRIANGLE"
                                                         : std::to_string(window)});
    if (result == FMOD_OK) {
        const Spectrum answer = Next(doubles::fmod.spectra);
        std::copy_n(answer.begin(), std::min(numValues, static_cast<int>(answer.size())), spectrum);
    }
    return result;
}

FMOD_RESULT Sound::release() {
    return Call("FMOD::Sound::release", this, soundPlace);
}

FMOD_RESULT Channel::setVolume(float volume) {
    return Call("FMOD::Channel::setVolume", this, channelPlace, volume);
}

FMOD_RESULT Channel::setMute(bool mute) {
    return Answer(Call("FMOD::Channel::setMute", this, channelPlace, mute), doubles::fmod.mute,
                  mute);
}

FMOD_RESULT Channel::getMute(bool* mute) {
    return Answer(Call("FMOD::Channel::getMute", this, channelPlace), *mute, doubles::fmod.mute);
}

FMOD_RESULT Channel::setPaused(bool paused) {
    return Answer(Call("FMOD::Channel::setPaused", this, channelPlace, paused),
                  doubles::fmod.paused, paused);
}

FMOD_RESULT Channel::getPaused(bool* paused) {
    return Answer(Call("FMOD::Channel::getPaused", this, channelPlace), *paused,
                  doubles::fmod.paused);
}

FMOD_RESULT Channel::isPlaying(bool* playing) {
    return Answer(Call("FMOD::Channel::isPlaying", this, channelPlace), *playing,
                  doubles::fmod.playing);
}

FMOD_RESULT Channel::getPosition(unsigned int* position, FMOD_TIMEUNIT unit) {
    const FMOD_RESULT result =
        Call("FMOD::Channel::getPosition", this, channelPlace,
             Word{unit == FMOD_TIMEUNIT_MS ? "FMOD_TIMEUNIT_MS" : std::to_string(unit)});
    if (result == FMOD_OK) {
        *position = Next(doubles::fmod.positions);
    }
    return result;
}

} // namespace FMOD
