#include "FmodErrorText.h"

#include <cstddef>
#include <iterator>

namespace engine {

namespace {

// Indexed by code; wording, spelling and trailing blanks are the library's own.
constexpr const char* texts[] = {
    "No errors. ",
    "Tried to call lock a second time before unlock was called. ",
    "Tried to call a function on a data type that does not allow this type of functionality (ie "
    "calling Sound::lock on a streaming sound). ",
    "Neither NTSCSI nor ASPI could be initialised. ",
    "An error occurred while initialising the CDDA subsystem. ",
    "Couldn't find the specified device. ",
    "No audio tracks on the specified disc. ",
    "No CD/DVD devices were found. ",
    "No disc present in the specified drive. ",
    "A CDDA read error occurred. ",
    "Error trying to allocate a channel. ",
    "The specified channel has been reused to play another sound. ",
    "A Win32 COM related error occured. COM failed to initialize or a QueryInterface failed "
    "meaning a Windows codec or driver was not installed properly. ",
    "DMA Failure.  See debug output for more information. ",
    "DSP connection error.  Connection possibly caused a cyclic dependancy. ",
    "DSP Format error.  A DSP unit may have attempted to connect to this network with the wrong "
    "format. ",
    "DSP connection error.  Couldn't find the DSP unit specified. ",
    "DSP error.  Cannot perform this operation while the network is in the middle of running.  "
    "This will most likely happen if a connection or disconnection is attempted in a DSP "
    "callback. ",
    "DSP connection error.  The unit being connected to or disconnected should only have 1 input "
    "or output. ",
    "Error loading file. ",
    "Couldn't perform seek operation.  This is a limitation of the medium (ie netstreams) or the "
    "file format. ",
    "End of file unexpectedly reached while trying to read essential data (truncated data?). ",
    "File not found. ",
    "Unwanted file access occured. ",
    "Unsupported file or audio format. ",
    "A HTTP error occurred. This is a catch-all for HTTP errors not listed elsewhere. ",
    "The specified resource requires authentication or is forbidden. ",
    "Proxy authentication is required to access the specified resource. ",
    "A HTTP server error occurred. ",
    "The HTTP request timed out. ",
    "FMOD was not initialized correctly to support this function. ",
    "Cannot call this command after System::init. ",
    "An error occured that wasnt supposed to.  Contact support. ",
    "An invalid object handle was used. ",
    "An invalid parameter was passed to this function. ",
    "An invalid speaker was passed to this function based on the current speaker mode. ",
    "PS2 only.  fmodex.irx failed to initialize.  This is most likely because you forgot to load "
    "it. ",
    "Not enough memory or resources. ",
    "PS2 only.  Not enough memory or resources on PlayStation 2 IOP ram. ",
    "Not enough memory or resources on console sound ram. ",
    "Tried to call a command on a 3d sound when the command was meant for 2d sound. ",
    "Tried to call a command on a 2d sound when the command was meant for 3d sound. ",
    "Tried to use a feature that requires hardware support.  (ie trying to play a VAG compressed "
    "sound in software on PS2). ",
    "Tried to use a feature that requires the software engine.  Software engine has either been "
    "turned off, or command was executed on a hardware channel which does not support this "
    "feature. ",
    "Couldn't connect to the specified host. ",
    "A socket error occurred.  This is a catch-all for socket-related errors not listed "
    "elsewhere. ",
    "The specified URL couldn't be resolved. ",
    "Operation could not be performed because specified sound is not ready. ",
    "Error initializing output device, but more specifically, the output device is already in use "
    "and cannot be reused. ",
    "Error creating hardware sound buffer. ",
    "A call to a standard soundcard driver failed, which could possibly mean a bug in the driver "
    "or resources were missing or exhausted. ",
    "Soundcard does not support the minimum features needed for this soundsystem (16bit stereo "
    "output). ",
    "Error initializing output device. ",
    "FMOD_HARDWARE was specified but the sound card does not have the resources nescessary to play "
    "it. ",
    "Attempted to create a software sound but no software channels were specified in "
    "System::init. ",
    "Panning only works with mono or stereo sound sources. ",
    "An unspecified error has been returned from a 3rd party plugin. ",
    "A requested output, dsp unit type or codec was not available. ",
    "A resource that the plugin requires cannot be found. (ie the DLS file for MIDI playback) ",
    "An error occured trying to initialize the recording device. ",
    "Specified Instance in FMOD_REVERB_PROPERTIES couldn't be set. Most likely because another "
    "application has locked the EAX4 FX slot. ",
    "This subsound is already being used by another sound, you cannot have more than one parent to "
    "a sound.  Null out the other parent's entry first. ",
    "The specified tag could not be found or there are no tags. ",
    "The sound created exceeds the allowable input channel count.  This can be increased with "
    "System::setMaxInputChannels. ",
    "Something in FMOD hasn't been implemented when it should be! contact support! ",
    "This command failed because System::init or System::setDriver was not called. ",
    "A command issued was not supported by this object.  Possibly a plugin without certain "
    "callbacks specified. ",
    "An error caused by System::update occured. ",
    "The version number of this file format is not supported. ",
};

} // namespace

const char* FmodErrorText(FMOD_RESULT result) {
    const int code = result;
    if (code < 0 || static_cast<std::size_t>(code) >= std::size(texts)) {
        return "Unknown error.";
    }
    return texts[code];
}

} // namespace engine
