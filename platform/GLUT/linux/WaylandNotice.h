// A message box for viewers without X, who may have started the program from a menu.
#pragma once

/// If a Wayland display answers, shows a box there that says that an X display is missing, and
/// returns once the viewer has closed it. Main thread only. The process must end afterwards: GTK
/// is connected to that display from then on.
void ReportMissingX();
