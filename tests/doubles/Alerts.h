// Doubles of the standard alerts, with scripted answers, and of the cursor.
#pragma once

#include <Carbon/Carbon.h>

namespace doubles {

struct AlertScript {
    bool canBeShown = true;     ///< false: no alert can be made
    DialogItemIndex answer = 1; ///< the item hit in a box that has more than an OK button
};

extern AlertScript alerts;

} // namespace doubles
