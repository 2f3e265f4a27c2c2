#!/usr/bin/env bash
# The viewer's ways out of the show, each with status 0. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

# expect_cursor_shown: once, by the show, as it left.
expect_cursor_shown() {
    expect_equal "what the show did to the cursor" shown "$(cat "$CURSOR_LOG")"
    expect_equal "cursor afterwards" visible "$("$PROGRAMS/cursor-state")"
}

EscapeRightAfterTheWindowOpensLeaves() {
    open_in_window "$PROGRAMS/skovra-positions"
    leave
    expect_cursor_shown
}

# close_window: by the window manager's own key for that.
close_window() {
    wait_for_position 1000
    headless_key alt+F4
    expect_exit 0
    expect_output
    expect_cursor_shown
}

ClosingTheWindowLeaves() {
    open_in_window "$PROGRAMS/skovra-positions"
    close_window
}

ClosingTheFullScreenWindowLeaves() {
    open_full_screen "$PROGRAMS/skovra-positions"
    headless_wait_active Skovra
    expect_equal "cursor" hidden "$("$PROGRAMS/cursor-state")"
    close_window
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
export CURSOR_LOG=$headless_dir/cursor
"$1"
