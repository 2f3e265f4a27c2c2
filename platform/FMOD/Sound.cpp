// FMOD::Sound: argument checks and result codes.
#include "Objects.h"

namespace FMOD {

FMOD_RESULT Sound::release() {
    auto& self = sound::SoundObject::Of(*this);
    self.system.RemoveSound(self);
    return FMOD_OK;
}

} // namespace FMOD
