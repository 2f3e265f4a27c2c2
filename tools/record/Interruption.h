// Whether the user or the system has asked to end the recording.
#pragma once

namespace record {

/// From now on termination signals are only recorded; ignored ones stay ignored.
void NoteInterruptions();

/// Throws std::runtime_error if such a signal has arrived.
void ThrowIfInterrupted();

/// Ends the process by the signal that has arrived; returns if there was none.
void EndIfInterrupted();

} // namespace record
