// What is set once for the whole show: OpenGL's fixed state, and a volume that has no effect.
#pragma once

/// Sets the volume to 175, before the music plays, where FmodEngine::SetVolume does not change what
/// is heard. Touches no OpenGL state. Always true. Needs `demo` with its music engine.
bool InitGL();

/// OpenGL's fixed state and the light. Needs `demo` and a current OpenGL context.
void SetGL();
