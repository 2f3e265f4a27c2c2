// A textured rectangle to stand behind a scene.
#pragma once

namespace engine {

/// Draws a rectangle at z = 0 around the origin, @p w and @p h its half width and height, with
/// texture @p tex, t = 0 at its top edge (a Box has it the other way round), tinted by the current
/// colour. Leaves @p tex bound and texturing enabled or disabled as it was. Needs a current OpenGL
/// context, outside glBegin and glEnd.
void DrawBackground(float w, float h, unsigned long tex);

} // namespace engine
