// Whether the user, or the system, asked for the recording's end.
#pragma once

namespace record {

/// From now on the signals that ask a program to end are only noted; those ignored stay so.
void NoteInterruptions();

/// Throws std::runtime_error once such a signal came.
void ThrowIfInterrupted();

/// Ends the process by the signal that came; returns if none did.
void EndIfInterrupted();

} // namespace record
