#!/usr/bin/env bash
# The show on the X server that its command line names. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

# begin: a desktop, $named, and another server, $other, where nobody looks.
begin() {
    start_display
    named=$DISPLAY
    headless_start_xvfb 800x600x24
    other=$DISPLAY
    export DISPLAY=$named
}

# expect_show_named ENVIRONMENT ARGUMENT...: its boxes, then its window, are on the desktop.
expect_show_named() {
    open_in_window env "$1" "$PROGRAMS/skovra-positions" "${@:2}"
    expect_window "$headless_window"
    leave
    expect_output
    expect_errors "$silence"
}

BoxesAndWindowAreOnIt() { expect_show_named "DISPLAY=$other" -display "$named"; }
ItNeedsNoOtherDisplay() { expect_show_named --unset=DISPLAY -display "$named"; }
TheLastNameCounts() { expect_show_named "DISPLAY=$other" -display :4711 -sync -display "$named"; }

FullScreenIsOnIt() {
    open_full_screen env "DISPLAY=$other" "$PROGRAMS/skovra-positions" -display "$named"
    headless_wait_active Skovra
    expect_equal "window" "0 0 1280 1024" "$(headless_geometry "$headless_window")"
    leave
}

WithoutItsNameIsSaidAndEndsTheProgram() {
    launch "$PROGRAMS/skovra" -display
    expect_end 1
    expect_start_only 'FMOD - Initiated'
    expect_errors "freeglut ($PROGRAMS/skovra): -display parameter must be followed by display name"
}

begin
"$1"
