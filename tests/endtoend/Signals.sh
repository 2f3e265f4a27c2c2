#!/usr/bin/env bash
# The show ended from outside. Argument: the case to run.
# shellcheck source=tests/platform/GLUT/linux/full-screen.sh
. "$(dirname "$0")/../platform/GLUT/linux/full-screen.sh"
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

desktop_and_windows() {
    desktop
    xprop -root _NET_CLIENT_LIST
    "$PROGRAMS/cursor-state"
}

is_as_before() {
    [ "$(desktop_and_windows)" = "$before" ]
}

# expect_desktop_after SIGNAL HOW: a show that is opened so and ended by SIGNAL leaves the desktop
# as it was.
expect_desktop_after() {
    local before
    xdotool mousemove 100 200
    before=$(desktop_and_windows)
    # Bash lets what it starts in the background ignore some signals.
    "$2" env --default-signal="$1" "$PROGRAMS/skovra-positions"
    wait_for_position 500
    expect_equal "processes of the show's own" "" \
        "$(cat "/proc/$headless_pid"/task/*/children 2>/dev/null)"
    kill -s "$1" "$headless_pid"
    expect_end $((128 + $(kill -l "$1")))
    headless_wait_until 60 "the desktop to be as before" is_as_before ||
        expect_equal "desktop afterwards" "$before" "$(desktop_and_windows)"
    expect_start_only 'FMOD - Initiated' # what had left the program's memory
    expect_errors "$silence"
}

in_window() {
    start_display
    expect_desktop_after "$1" open_in_window
}

in_full_screen() {
    start_display
    expect_desktop_after "$1" open_full_screen
}

TerminateInAWindowLeavesTheDesktop() { in_window TERM; }
InterruptInAWindowLeavesTheDesktop() { in_window INT; }
HangUpInAWindowLeavesTheDesktop() { in_window HUP; }
TerminateInFullScreenLeavesTheDesktop() { in_full_screen TERM; }
InterruptInFullScreenLeavesTheDesktop() { in_full_screen INT; }
HangUpInFullScreenLeavesTheDesktop() { in_full_screen HUP; }

TerminateInGameModeLeavesTheDesktop() {
    headless_begin
    headless_start_xorg 1280x1024 || exit $?
    headless_start_openbox
    without_sound
    expect_desktop_after TERM open_full_screen
}

"$1"
