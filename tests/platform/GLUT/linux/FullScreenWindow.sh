#!/usr/bin/env bash
# Full screen on a server without game mode. Argument: the case to run.
# shellcheck source=tests/platform/GLUT/linux/full-screen.sh
. "$(dirname "$0")/full-screen.sh"

is_full_screen() {
    xprop -id "$headless_window" _NET_WM_STATE | grep -q _NET_WM_STATE_FULLSCREEN
}

what='window 1280x1024 at 0,0, cursor hidden'

CoversTheScreen() {
    start_display
    fill_screen "$what"
    expect_blue 0 0 1279 0 0 1023 1279 1023
    headless_wait_active Skovra
    headless_wait_until 10 "the window to be full screen" is_full_screen || fail "it is not"
    expect_equal "window" "0 0 1280 1024" "$(headless_geometry "$headless_window")"
    expect_keys_arrive
    leave
}

CoversTheScreenWithoutAWindowManager() {
    headless_begin
    headless_start_xvfb
    fill_screen "$what"
    expect_blue 0 0 1279 0 0 1023 1279 1023
    headless_wait_visible Skovra
    expect_equal "window" "0 0 1280 1024" "$(headless_geometry "$headless_window")"
    expect_keys_arrive
    leave
}

same_desktop_after() {
    start_display
    expect_same_desktop "$1"
}

EndedByEscapeLeavesTheDesktopAsItWas() { same_desktop_after Escape; }
EndedBySignalLeavesTheDesktopAsItWas() { same_desktop_after TERM; }
KilledLeavesTheDesktopAsItWas() { same_desktop_after KILL; }

IsOnTheDisplayNamedAsAnArgument() {
    headless_begin
    headless_start_xvfb 1024x768x24
    local named=$DISPLAY
    headless_start_xvfb 800x600x24
    fill_screen 'window 1024x768 at 0,0, cursor hidden' -display "$named"
    DISPLAY=$named leave
}

"$1"
