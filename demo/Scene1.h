// The visible show: the picture, the spectrum bars and the box.
#pragma once

/// The box is black and hardly a point on the screen: it is drawn, and not to be noticed.
/// Draws the show for the present music position and spectrum and moves it on by one frame.
/// Needs `demo`, `kasse` and a current OpenGL context with the model-view matrix selected.
/// Leaves the model-view matrix moved (the caller restores it), the texture matrix scrolled for
/// the next frame's picture, texturing enabled and the current colour black.
void Scene1();

/// A quad at z = 0 from the origin to (@p width, @p height), in model units, with the whole of the
/// current texture, t = 0 at its top edge.
void DrawSquare(double width, double height);
