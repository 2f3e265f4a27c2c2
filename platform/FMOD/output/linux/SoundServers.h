// Which sound servers are worth asking, found out without their libraries.
#pragma once

namespace sound {

/// Whether there is a socket of a PipeWire daemon, or the environment leads to one elsewhere. Its
/// library takes two megabytes to find that out, and more with each attempt.
bool PipeWireMayRun();

/// Whether this user's JACK server runs. Its library waits for other processes, if need be for
/// ever.
bool JackServerRuns();

} // namespace sound
