// What a viewer sees where X is missing, who may have started the program from a menu.
#pragma once

/// Where a Wayland display answers: says there, in a box, that an X display is missing, and returns
/// once the viewer has closed it. Main thread only. The process has to end after it: GTK is on that
/// display from then on.
void TellOfMissingX();
