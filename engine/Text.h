// Text in GLUT's stroke font.
#pragma once

namespace engine {

/// Writes @p text, zero-terminated, from (@p x, @p y, 0) on, in the current colour and at the
/// font's own size, about 100 model units a capital: the caller scales. Every call leaves the
/// current matrix moved by (-@p x, -@p y, 0). Needs GLUT and a current OpenGL context.
void OutputText(float x, float y, char* text);

} // namespace engine
