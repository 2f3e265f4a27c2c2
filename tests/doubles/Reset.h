// Back to the beginning, for fixtures.
#pragma once

namespace doubles {

/// Gives every service its first script and forgets what was made of it.
void Reset();

} // namespace doubles
