// The frame loop: each timer tick draws a frame and requests a second one.
#pragma once

/// The timer callback: draws a frame, arms itself again, then posts a redisplay, for which GLUT
/// draws another: at a later position if time has passed, and with everything turned and scrolled
/// one step further. @p value is not used.
void TimerFunc(int value);

/// The display callback: draws one frame, or ends the program once the playback position is beyond
/// 33000 ms. The very first call runs the loader.
void DrawGLScene();

/// Sets the frame's model-view state and draws the scene for the current playback position.
void DrawWhat();
