// Resets all doubles, for fixtures.
#pragma once

namespace doubles {

/// Gives every service its default script and discards its state.
void Reset();

} // namespace doubles
