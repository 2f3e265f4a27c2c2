// A second scene, a turning ring; the show does not play it.
#pragma once

/// Draws a red ring 700 units away and turns it, and the first scene's box with it, by a degree.
/// Starts from the identity, whatever the current matrix was, and leaves it changed. Needs a
/// current OpenGL context with the model-view matrix selected.
void Scene2();
