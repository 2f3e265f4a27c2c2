#!/usr/bin/env bash
# The show whose display goes away. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"

# expect_loss_told [LINE]: Xlib's words, which depend on what the program was doing just then, and
# may be said once for each of its two connections; before them LINE.
expect_loss_told() {
    local number='[0-9]+' rest=$headless_dir/rest
    local broken="(X connection to $DISPLAY broken \(explicit kill or server shutdown\)\.|XIO:  fatal IO error $number \([A-Za-z ]+\) on X server \"$DISPLAY\")"
    local more="(      after $number requests \($number known processed\) with $number events remaining\.|Xlib:  extension \"[A-Za-z-]+\" missing on display \"$DISPLAY\"\.)"
    tr -d '\r' <"$headless_err" | grep -vxF -e "${1:-nothing}" >"$rest" || :
    grep -qxE "$broken" "$rest" || fail "the loss is not told"
    ! grep -vxE "$broken|$more" "$rest" || fail "standard error says more"
}

expect_end_in_mid_show() {
    expect_end 1
    expect_output
    expect_loss_told "$silence"
}

expect_end_in_box() {
    expect_end 1
    expect_start_only 'FMOD - Initiated'
    expect_loss_told
}

end_server() {
    kill -s "$1" "${headless_pids[0]}"
}

ServerKilledInAWindowedShow() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 500
    end_server KILL
    expect_end_in_mid_show
}

ServerEndedInAFullScreenShow() {
    open_full_screen "$PROGRAMS/skovra-positions"
    wait_for_position 500
    end_server TERM
    expect_end_in_mid_show
}

ConnectionCutInMidShow() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 500
    xkill -id "$headless_window" >&2
    expect_end_in_mid_show
}

ServerKilledWhileABoxIsShown() {
    launch "$PROGRAMS/skovra"
    headless_wait_active "$title" 60
    end_server KILL
    expect_end_in_box
}

ConnectionCutWhileABoxIsShown() {
    launch "$PROGRAMS/skovra"
    headless_wait_active "$title" 60
    xkill -id "$headless_window" >&2
    expect_end_in_box
}

start_display
"$1"
