// Whether JACK is worth asking.
#pragma once

namespace sound {

/// Whether this user's JACK server runs, found without JACK's library: that waits for other
/// processes, if need be for ever.
bool JackServerRuns();

} // namespace sound
