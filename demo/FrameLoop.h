// The frame loop: one timer tick draws one frame and asks for one more.
#pragma once

/// The timer callback: draws a frame, arms itself again, then posts a redisplay, which draws the
/// same moment a second time. @p value is not used.
void TimerFunc(int value);

/// The display callback: draws one frame, or ends the program once the music has passed 33000 ms.
/// The first call ever runs the loader.
void DrawGLScene();

/// The frame's model-view state and what belongs to the present music position.
void DrawWhat();
