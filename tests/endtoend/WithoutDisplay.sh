#!/usr/bin/env bash
# The show where there is no display. Argument: the case to run.
# shellcheck source=tests/endtoend/show.sh
. "$(dirname "$0")/show.sh"

expect_refusal() {
    expect_exit 1
    expected_output | sed '/^Configuring FMOD/,$d' | cmp - "$headless_out" ||
        fail "standard output differs"
    grep -q "failed to open display '$1'" "$headless_err" || fail "the reason is not told"
}

NoDisplayIsSaidAndEndsTheProgram() {
    headless_begin
    without_sound
    unset DISPLAY WAYLAND_DISPLAY
    launch "$PROGRAMS/skovra"
    expect_refusal ""
}

UnreachableDisplayIsSaidAndEndsTheProgram() {
    headless_begin
    without_sound
    export DISPLAY=:4711
    launch "$PROGRAMS/skovra"
    expect_refusal :4711
}

"$1"
