// The music: opening and playing it, playback position, spectrum, error messages.
#pragma once

#include "BaseEngine.h"

#include <FMOD/FMOD.h>

#include <cstdint>
#include <string>

namespace engine {

/// Owns the sound library's system, one sound and the channel it plays on. Main thread only.
/// Operations marked "checked" end the process with status 255, through FmodCheckError, when the
/// library refuses; those marked "needs Play" are refused before it. The others ignore a refusal.
class FmodEngine : public BaseEngine {
public:
    /// Starts the library and opens resource @p name (Mac Roman) of type "mp3". Checked.
    explicit FmodEngine(std::string name);

    /// The same for resource "music", without the progress messages. Checked.
    FmodEngine();

    /// Checked.
    ~FmodEngine();

    FmodEngine(const FmodEngine&) = delete;
    FmodEngine& operator=(const FmodEngine&) = delete;

    /// Field defaults, then the library's creation, version check and start. Checked.
    /// For the constructors only.
    void BasicInit();

    /// Returns if @p result is FMOD_OK; otherwise prints the error on standard output and ends the
    /// process with status 255.
    void FmodCheckError(FMOD_RESULT result);

    /// Starts the music from its beginning, at full volume whatever `volume` holds. Checked.
    void Play();

    /// Gives the library time for its periodic work.
    void Update();

    /// Reads the spectrum of the sound heard now into `spectrum`.
    void UpdateSpectrum();

    /// The sum of bands @p from to @p to, both included, divided by @p to - @p from; 0 unless
    /// @p from < @p to. Bands are 0..511 and not checked.
    float GetAverage(int from, int to);

    /// The band that holds @p frequency, in Hz; 22050 gives 512, one past the last.
    int GetIndex(int frequency);

    /// The playback position heard now, in ms of music. Checked, needs Play.
    std::uint32_t GetCurTime();

    /// Whether the music still plays; traces the answer on standard output. Checked after Play;
    /// before it false, with another trace.
    bool GetIsPlaying();

    /// Checked, needs Play.
    bool GetMute();

    /// Applies the present mute state again. Checked, needs Play.
    void SetMute();

    /// Pauses or resumes; does nothing before Play.
    void SetPaused();

    /// @p newVolume: 0..255, linear. Before Play it only sets `volume`, which Play does not apply.
    void SetVolume(float newVolume);

    FMOD::System* system = nullptr;
    FMOD::Sound* sound = nullptr;
    FMOD::Channel* channel = nullptr; ///< null until Play
    FMOD_RESULT lastResult = FMOD_OK; ///< of the latest position query
    std::uint32_t position = 0;       ///< ms, latest answer
    std::uint32_t version = 0;        ///< of the library, see FMOD_VERSION
    float spectrum[512] = {};         ///< magnitudes, lowest band first, each 43 Hz wide
    float volume = 0;                 ///< 0..255, as last passed to SetVolume; 40 before that
    bool mute = false;                ///< as last read
    bool stopped = false;             ///< true until Play
    bool paused = false;              ///< as read by SetPaused, before it switched
};

} // namespace engine
