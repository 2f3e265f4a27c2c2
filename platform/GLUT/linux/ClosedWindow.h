// What a program learns of a window that its viewer closes.
#pragma once

/// Presses Escape in the current window when the viewer closes it, and before it is gone.
void PressEscapeWhenClosed();
