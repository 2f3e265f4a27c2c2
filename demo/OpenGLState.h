// What is set once for the whole show: the volume, and OpenGL's fixed state.
#pragma once

/// Configures the music volume; touches no OpenGL state. Always true.
bool InitGL();

/// OpenGL's fixed state and the light. Needs `demo` and a current OpenGL context.
void SetGL();
