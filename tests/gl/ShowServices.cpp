// The services of the show that its pictures do not need, in place of GLUT, sound and alerts.
// The window is the current context, the sound is what the test says; nobody is asked anything.
#include "ShowServices.h"

#include <Carbon/Carbon.h>
#include <FMOD/FMOD.h>
#include <GL/glut.h>

#include <algorithm>

namespace gltest {

Music music;
int presentedFrames = 0;

namespace {

// Sound and channel have no members, and nobody but the library can make one: this stands for both.
char place = 0;

} // namespace

} // namespace gltest

// Referred to by the show's main, which no test runs.
void glutInit(int*, char**) {}
void glutInitDisplayMode(unsigned int) {}
void glutInitWindowSize(int, int) {}
void glutInitWindowPosition(int, int) {}
int glutCreateWindow(const char*) {
    return 1;
}
void glutFullScreen() {}
int glutEnterGameMode() {
    return 1;
}
void glutDisplayFunc(void (*)()) {}
void glutReshapeFunc(void (*)(int, int)) {}
void glutKeyboardFunc(void (*)(unsigned char, int, int)) {}
void glutTimerFunc(unsigned int, void (*)(int), int) {}
void glutMainLoop() {}
void glutPostRedisplay() {}

void glutSwapBuffers() {
    ++gltest::presentedFrames;
}

OSStatus CreateStandardAlert(AlertType, CFStringRef, CFStringRef,
                             const AlertStdCFStringAlertParamRec*, DialogRef* alert) {
    *alert = nullptr;
    return noErr;
}

OSStatus RunStandardAlert(DialogRef, ModalFilterUPP, DialogItemIndex* itemHit) {
    *itemHit = kAlertStdAlertOKButton;
    return noErr;
}

OSStatus HideCursor() {
    return noErr;
}
OSStatus ShowCursor() {
    return noErr;
}

namespace FMOD {

FMOD_RESULT System_Create(System** system) {
    static System theSystem;
    *system = &theSystem;
    return FMOD_OK;
}

FMOD_RESULT System::getVersion(unsigned int* version) {
    *version = FMOD_VERSION;
    return FMOD_OK;
}

FMOD_RESULT System::init(int, FMOD_INITFLAGS, void*) {
    return FMOD_OK;
}
FMOD_RESULT System::update() {
    return FMOD_OK;
}
FMOD_RESULT System::close() {
    return FMOD_OK;
}
FMOD_RESULT System::release() {
    return FMOD_OK;
}

FMOD_RESULT System::createSound(const char*, FMOD_MODE, FMOD_CREATESOUNDEXINFO*, Sound** sound) {
    *sound = reinterpret_cast<Sound*>(&gltest::place);
    return FMOD_OK;
}

FMOD_RESULT System::playSound(FMOD_CHANNELINDEX, Sound*, bool, Channel** channel) {
    *channel = reinterpret_cast<Channel*>(&gltest::place);
    return FMOD_OK;
}

FMOD_RESULT System::getSpectrum(float* spectrum, int numValues, int, FMOD_DSP_FFT_WINDOW) {
    std::copy_n(gltest::music.spectrum.begin(), numValues, spectrum);
    return FMOD_OK;
}

FMOD_RESULT Sound::release() {
    return FMOD_OK;
}

FMOD_RESULT Channel::setVolume(float) {
    return FMOD_OK;
}
FMOD_RESULT Channel::setMute(bool) {
    return FMOD_OK;
}
FMOD_RESULT Channel::getMute(bool* mute) {
    *mute = false;
    return FMOD_OK;
}
FMOD_RESULT Channel::setPaused(bool) {
    return FMOD_OK;
}
FMOD_RESULT Channel::getPaused(bool* paused) {
    *paused = false;
    return FMOD_OK;
}

FMOD_RESULT Channel::isPlaying(bool* playing) {
    *playing = true;
    return FMOD_OK;
}

FMOD_RESULT Channel::getPosition(unsigned int* position, FMOD_TIMEUNIT) {
    *position = gltest::music.positionMs;
    return FMOD_OK;
}

} // namespace FMOD
