// The sound library's interface: one system, streamed sounds, the channels they play on.
//
// All operations must be called on the thread that created the system. None throws or ends the
// process: each returns a result code. No operation may be called on a null object.
#pragma once

/// The result of an operation: FMOD_OK, or why it did nothing.
enum FMOD_RESULT : int {
    FMOD_OK = 0,
    FMOD_ERR_FILE_BAD = 19,       ///< the file is there but cannot be read
    FMOD_ERR_FILE_NOTFOUND = 22,  ///< no such file, or an empty path
    FMOD_ERR_FORMAT = 24,         ///< not an MP3 file
    FMOD_ERR_INITIALIZED = 31,    ///< System::init has been called already
    FMOD_ERR_INVALID_HANDLE = 33, ///< no such channel
    FMOD_ERR_INVALID_PARAM = 34,  ///< an argument is out of its range
    FMOD_ERR_MEMORY = 37,         ///< out of memory or threads
    FMOD_ERR_UNINITIALIZED = 65,  ///< System::init has not been called
};

using FMOD_MODE = unsigned int;
using FMOD_INITFLAGS = unsigned int;
using FMOD_TIMEUNIT = unsigned int;

/// The interface version of this library, 4.03.06: major, minor and patch in hexadecimal.
inline constexpr unsigned int FMOD_VERSION = 0x00040306;

inline constexpr FMOD_INITFLAGS FMOD_INIT_NORMAL = 0;

inline constexpr FMOD_MODE FMOD_2D = 0x08;           ///< no positioning in space
inline constexpr FMOD_MODE FMOD_SOFTWARE = 0x40;     ///< mixed by the library
inline constexpr FMOD_MODE FMOD_CREATESTREAM = 0x80; ///< decoded while it plays

inline constexpr FMOD_TIMEUNIT FMOD_TIMEUNIT_MS = 1;

enum FMOD_CHANNELINDEX : int { FMOD_CHANNEL_FREE = -1 };

enum FMOD_DSP_FFT_WINDOW : int {
    FMOD_DSP_FFT_WINDOW_RECT = 0,
    FMOD_DSP_FFT_WINDOW_TRIANGLE = 1,
};

/// Extended sound parameters; not supported, pass null.
struct FMOD_CREATESOUNDEXINFO;

namespace FMOD {

class Channel;
class Sound;

/// The library. Made by System_Create, ended by release().
class System {
public:
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    /// Frees the system and everything it made; the pointer is invalid afterwards.
    FMOD_RESULT release();

    /// Starts the output and allows @p maxChannels (1..64) channels. @p extraDriverData: null.
    /// Without a sound device the output is silent and still runs in real time.
    /// Waits at most 50 ms for the device, as playSound does.
    FMOD_RESULT init(int maxChannels, FMOD_INITFLAGS flags, void* extraDriverData);

    /// Ends the output; sounds and channels are invalid afterwards, init may be called again.
    FMOD_RESULT close();

    /// Optional: position, spectrum and output advance without it.
    FMOD_RESULT update();

    FMOD_RESULT getVersion(unsigned int* version);

    /// Opens the MP3 file at @p path for streaming; reads less than 256 KiB of it. Its first frame
    /// follows tags (ID3v2, APEv2) and padding (zeros), or the rest of a frame, up to 8 KiB.
    /// Damage in the middle is skipped; the music ends at damage longer than 16 MiB.
    /// @p exInfo: null. @p sound is owned by the caller, see Sound::release.
    FMOD_RESULT createSound(const char* path, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO* exInfo,
                            Sound** sound);

    /// Plays @p sound from its beginning. @p channel is owned by the system and stays valid
    /// after the end of the sound, until its sound is released or the system closed.
    FMOD_RESULT playSound(FMOD_CHANNELINDEX index, Sound* sound, bool paused, Channel** channel);

    /// Writes @p numValues (a power of two, 64..8192) magnitudes of the sound heard now, index 0
    /// the lowest band. Analyses the latest 2 * @p numValues samples heard of channel
    /// @p channelOffset (0 left, 1 right) of the mix; a full-scale sine in the middle of a band
    /// reads 1.0, silence 0.0.
    FMOD_RESULT getSpectrum(float* spectrum, int numValues, int channelOffset,
                            FMOD_DSP_FFT_WINDOW window);

protected:
    friend FMOD_RESULT System_Create(System** system);
    System() = default;
    ~System() = default;
};

/// A file opened for streaming.
class Sound {
public:
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    /// Stops its playback and closes the file; the pointer is invalid afterwards.
    FMOD_RESULT release();

protected:
    Sound() = default;
    ~Sound() = default;
};

/// One playback of a sound.
class Channel {
public:
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// @p volume: linear, 0..1, clamped; 1 when a sound starts.
    FMOD_RESULT setVolume(float volume);
    FMOD_RESULT setMute(bool mute);
    FMOD_RESULT getMute(bool* mute);
    FMOD_RESULT setPaused(bool paused);
    FMOD_RESULT getPaused(bool* paused);

    /// True until the last frame of the sound has been heard, also while paused.
    FMOD_RESULT isPlaying(bool* playing);

    /// The playback position heard now, to the nearest ms; @p unit: FMOD_TIMEUNIT_MS. It halts
    /// while paused or during an underrun, and stays at the length of the sound after its end.
    /// FMOD_ERR_FILE_BAD, here and in isPlaying, once everything was heard that could be read of a
    /// file before a read error, or before memory ran out.
    FMOD_RESULT getPosition(unsigned int* position, FMOD_TIMEUNIT unit);

protected:
    Channel() = default;
    ~Channel() = default;
};

/// Makes the system; @p system is ended by System::release.
FMOD_RESULT System_Create(System** system);

} // namespace FMOD
