// The visible show: the picture, the spectrum bars and the box.
#pragma once

/// Draws the show for the current playback position and spectrum and advances it by one frame.
/// The box is black and about a pixel in size: it is drawn, but hardly visible.
/// Needs `demo`, `kasse` and a current OpenGL context with the model-view matrix selected.
/// Leaves the model-view matrix moved (the caller restores it), the texture matrix scrolled for
/// the next frame's picture, texturing enabled and the current colour black.
void Scene1();

/// A quad at z = 0 from the origin to (@p width, @p height), in model units, with the whole of the
/// current texture, t = 0 at its top edge.
void DrawSquare(double width, double height);
