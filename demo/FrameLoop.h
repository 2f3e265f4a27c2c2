// The frame loop: each timer tick draws a frame and requests a second one.
#pragma once

/// The timer callback: draws a frame, arms itself again, then posts a redisplay, for which GLUT
/// draws another: at a later position if time has passed, and with everything turned and scrolled
/// one step further. @p value is not used.
void TimerFunc(int value);

/// The display callback: draws one frame, or ends the program once the music has passed 33000 ms.
/// The first call ever runs the loader.
void DrawGLScene();

/// The frame's model-view state and what belongs to the present music position.
void DrawWhat();
