// The window in the page: what window.js offers, and what it calls. Without a window only
// SkovraWindowStart and SkovraWindowOpen may be called.
#pragma once

#include <emscripten/em_macros.h>

extern "C" {

/// Takes the canvas's WebGL 2 context into use. False: the browser has none.
bool SkovraWindowStart();

/// Shows the canvas; sizes in CSS pixels. Full screen: the whole screen if the browser allows it,
/// which it does after a click or a key, or else the whole page; the sizes do not matter then.
void SkovraWindowOpen(bool isFullScreen, int width, int height);

/// Makes the canvas's picture that large, in device pixels.
void SkovraWindowResize(int width, int height);

/// What was drawn is a frame: callbacks wait until it is on its way to the screen.
void SkovraWindowEndFrame();

void SkovraWindowSetCursor(bool isShown);

/// Leaves main for the page's event loop, without running destructors.
[[noreturn]] void SkovraWindowLoop();

/// Ends the callbacks, and full screen.
void SkovraWindowClose();

enum SkovraWindowEvent : int {
    skovraWindowWork = 0,    ///< whatever is due
    skovraWindowSize = 1,    ///< to width and height, in device pixels
    skovraWindowKey = 2,     ///< its character in ISO 8859-1
    skovraWindowSpecial = 3, ///< GLUT_KEY_LEFT and the like
};

/// The only way into the program once it is in its loop. Answers when it has work to do, in ms;
/// negative: not before the next event. A program that calls exit throws ExitStatus through it.
EMSCRIPTEN_KEEPALIVE double SkovraWindowDeliver(SkovraWindowEvent event, int first, int second);
}
