// What a viewer sees where boxes cannot be shown.
#pragma once

/// Where a Wayland display answers: says there, in a box, that an X display is missing, and returns
/// true once the viewer has closed it. GTK has no display then, as before.
bool TellOfMissingX();
