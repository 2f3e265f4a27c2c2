#!/usr/bin/env bash
# Full screen on a server with game mode: a real one, on a driver without a monitor. Argument: the
# case to run; ends with 77 where such a server cannot run.
# shellcheck source=tests/platform/GLUT/linux/full-screen.sh
. "$(dirname "$0")/full-screen.sh"

what='game mode 1280x1024 at 0,0, cursor hidden'
window='window 1280x1024 at 0,0, cursor hidden'

CoversTheScreen() {
    headless_start_openbox
    fill_screen "$what"
    expect_blue 0 0 1279 0 0 1023 1279 1023
    expect_keys_arrive
    leave
}

CoversTheScreenWithoutAWindowManager() {
    fill_screen "$what"
    expect_blue 0 0 1279 0 0 1023 1279 1023
    expect_keys_arrive
    leave
}

IsOnTheDisplayNamedAsAnArgument() {
    local named=$DISPLAY
    headless_start_xvfb
    fill_screen "$what" -display "$named"
    DISPLAY=$named leave
}

EndedByEscapeLeavesTheDesktopAsItWas() { expect_same_desktop Escape; }
EndedBySignalLeavesTheDesktopAsItWas() { expect_same_desktop TERM; }
KilledLeavesTheDesktopAsItWas() { expect_same_desktop KILL; }

IsNotEnteredOnTwoMonitors() {
    xrandr --addmode DUMMY1 1024x768
    xrandr --output DUMMY1 --mode 1024x768 --right-of DUMMY0
    what='window 2304x1024 at 0,0, cursor hidden'
    expect_same_desktop TERM
}

IsNotEnteredOnOneMonitorDividedInTwo() {
    xrandr --setmonitor left 640/170x1024/270+0+0 DUMMY0 \
        --setmonitor right 640/170x1024/270+640+0 none >/dev/null
    what=$window
    expect_same_desktop TERM
}

IsNotEnteredWhereTheScreenIsLargerThanTheMonitor() {
    xrandr --fb 1600x1200
    what='window 1600x1200 at 0,0, cursor hidden'
    expect_same_desktop TERM
}

KeepsAnotherRefreshRateThanTheServers() {
    xrandr --output DUMMY0 --mode 1280x1024 --rate 60
    expect_same_desktop TERM
    xrandr --verbose | grep -A 2 'current' | grep -q '60.02Hz' || fail "the rate is not 60 Hz"
}

# Until the monitors are next asked about, mode switching takes the rate before for the current one.
IsNotEnteredWhereItWouldChangeTheRefreshRate() {
    xrandr --output DUMMY0 --mode 1280x1024 --rate 60
    fill_screen "$window"
}

# hold WHAT: another program takes the pointer or the keyboard for as long as the test runs.
hold() {
    headless_launch "$PROGRAMS/hold-input" "$1"
    headless_wait_until 10 "the $1 to be held" has_printed taken
}

IsNotEnteredWhileThePointerIsHeld() {
    hold pointer
    fill_screen "$window"
}

IsNotEnteredWhileTheKeyboardIsHeld() {
    hold keyboard
    fill_screen "$window"
}

headless_begin
headless_start_xorg 1280x1024 1024x768 || exit $?
"$1"
