// Which sound servers seem to be running, detected without their libraries.
#pragma once

namespace sound {

/// Whether there is a socket of a PipeWire daemon, or the environment names one elsewhere. Its
/// library would take two megabytes to find that out, and more with each attempt.
bool PipeWireMayRun();

/// Whether this user's JACK server is running. Its library waits for other processes, possibly
/// forever.
bool JackServerRuns();

} // namespace sound
