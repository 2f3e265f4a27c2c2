#!/usr/bin/env bash
# The viewer's ways out of the show, each with status 0. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

EscapeRightAfterTheWindowOpensLeaves() {
    open_in_window "$PROGRAMS/skovra"
    leave
}

ClosingTheWindowLeaves() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 1000
    headless_key alt+F4 # the window manager's own key for closing a window
    expect_exit 0
    expect_output
}

OtherKeysChangeNothing() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 500
    local window=$headless_window
    headless_key a A q Q x space Return Tab F1 F11 Left 1 BackSpace
    wait_for_position 2500
    headless_has_ended "$headless_pid" && fail "a key other than Escape ended the show"
    expect_window "$window"
    leave
    expect_output
}

start_display
"$1"
