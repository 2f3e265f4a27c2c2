// The texts of the sound library's result codes, each written out.
#include "FmodErrorText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string TextOf(int code) {
    return engine::FmodErrorText(static_cast<FMOD_RESULT>(code));
}

TEST(FmodErrorTextTest, EveryCodeHasItsText) {
    const std::string expected[] = {
        R"(No errors. )",
        R"(Tried to call lock a second time before unlock was called. )",
        R"(Tried to call a function on a data type that does not allow this type of functionality (ie calling Sound::lock on a streaming sound). )",
        R"(Neither NTSCSI nor ASPI could be initialised. )",
        R"(An error occurred while initialising the CDDA subsystem. )",
        R"(Couldn't find the specified device. )",
        R"(No audio tracks on the specified disc. )",
        R"(No CD/DVD devices were found. )",
        R"(No disc present in the specified drive. )",
        R"(A CDDA read error occurred. )",
        R"(Error trying to allocate a channel. )",
        R"(The specified channel has been reused to play another sound. )",
        R"(A Win32 COM related error occured. COM failed to initialize or a QueryInterface failed meaning a Windows codec or driver was not installed properly. )",
        R"(DMA Failure.  See debug output for more information. )",
        R"(DSP connection error.  Connection possibly caused a cyclic dependancy. )",
        R"(DSP Format error.  A DSP unit may have attempted to connect to this network with the wrong format. )",
        R"(DSP connection error.  Couldn't find the DSP unit specified. )",
        R"(DSP error.  Cannot perform this operation while the network is in the middle of running.  This will most likely happen if a connection or disconnection is attempted in a DSP callback. )",
        R"(DSP connection error.  The unit being connected to or disconnected should only have 1 input or output. )",
        R"(Error loading file. )",
        R"(Couldn't perform seek operation.  This is a limitation of the medium (ie netstreams) or the file format. )",
        R"(End of file unexpectedly reached while trying to read essential data (truncated data?). )",
        R"(File not found. )",
        R"(Unwanted file access occured. )",
        R"(Unsupported file or audio format. )",
        R"(A HTTP error occurred. This is a catch-all for HTTP errors not listed elsewhere. )",
        R"(The specified resource requires authentication or is forbidden. )",
        R"(Proxy authentication is required to access the specified resource. )",
        R"(A HTTP server error occurred. )",
        R"(The HTTP request timed out. )",
        R"(FMOD was not initialized correctly to support this function. )",
        R"(Cannot call this command after System::init. )",
        R"(An error occured that wasnt supposed to.  Contact support. )",
        R"(An invalid object handle was used. )",
        R"(An invalid parameter was passed to this function. )",
        R"(An invalid speaker was passed to this function based on the current speaker mode. )",
        R"(PS2 only.  fmodex.irx failed to initialize.  This is most likely because you forgot to load it. )",
        R"(Not enough memory or resources. )",
        R"(PS2 only.  Not enough memory or resources on PlayStation 2 IOP ram. )",
        R"(Not enough memory or resources on console sound ram. )",
        R"(Tried to call a command on a 3d sound when the command was meant for 2d sound. )",
        R"(Tried to call a command on a 2d sound when the command was meant for 3d sound. )",
        R"(Tried to use a feature that requires hardware support.  (ie trying to play a VAG compressed sound in software on PS2). )",
        R"(Tried to use a feature that requires the software engine.  Software engine has either been turned off, or command was executed on a hardware channel which does not support this feature. )",
        R"(Couldn't connect to the specified host. )",
        R"(A socket error occurred.  This is a catch-all for socket-related errors not listed elsewhere. )",
        R"(The specified URL couldn't be resolved. )",
        R"(Operation could not be performed because specified sound is not ready. )",
        R"(Error initializing output device, but more specifically, the output device is already in use and cannot be reused. )",
        R"(Error creating hardware sound buffer. )",
        R"(A call to a standard soundcard driver failed, which could possibly mean a bug in the driver or resources were missing or exhausted. )",
        R"(Soundcard does not support the minimum features needed for this soundsystem (16bit stereo output). )",
        R"(Error initializing output device. )",
        R"(FMOD_HARDWARE was specified but the sound card does not have the resources nescessary to play it. )",
        R"(Attempted to create a software sound but no software channels were specified in System::init. )",
        R"(Panning only works with mono or stereo sound sources. )",
        R"(An unspecified error has been returned from a 3rd party plugin. )",
        R"(A requested output, dsp unit type or codec was not available. )",
        R"(A resource that the plugin requires cannot be found. (ie the DLS file for MIDI playback) )",
        R"(An error occured trying to initialize the recording device. )",
        R"(Specified Instance in FMOD_REVERB_PROPERTIES couldn't be set. Most likely because another application has locked the EAX4 FX slot. )",
        R"(This subsound is already being used by another sound, you cannot have more than one parent to a sound.  Null out the other parent's entry first. )",
        R"(The specified tag could not be found or there are no tags. )",
        R"(The sound created exceeds the allowable input channel count.  This can be increased with System::setMaxInputChannels. )",
        R"(Something in FMOD hasn't been implemented when it should be! contact support! )",
        R"(This command failed because System::init or System::setDriver was not called. )",
        R"(A command issued was not supported by this object.  Possibly a plugin without certain callbacks specified. )",
        R"(An error caused by System::update occured. )",
        R"(The version number of this file format is not supported. )",
    };
    int code = 0;
    for (const std::string& text : expected) {
        EXPECT_EQ(TextOf(code), text) << code;
        ++code;
    }
    EXPECT_EQ(code, 69);
}

TEST(FmodErrorTextTest, CodesOutsideTheTableAreUnknown) {
    for (const int code : {69, 70, 1000, 0x7FFFFFFF, -1, -2, -0x7FFFFFFF - 1}) {
        EXPECT_EQ(TextOf(code), "Unknown error.") << code;
    }
}

} // namespace
