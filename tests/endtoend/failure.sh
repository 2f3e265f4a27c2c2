#!/usr/bin/env bash
# What the tests of failures share. Sourced first.
# shellcheck source=script/lib/show.sh
. "$(dirname "${BASH_SOURCE[0]}")/../../script/lib/show.sh"

# shellcheck disable=SC2034 # how long the waits of headless.sh last: longer only if it hangs
headless_limit=60

silence='skovra-positions: no sound device, playing silently'

# expect_errors [LINE...]: that and nothing else on standard error.
expect_errors() {
    { [ $# -eq 0 ] || printf '%s\n' "$@"; } | cmp - "$headless_err" || fail "standard error differs"
}

# expect_end STATUS: within a minute.
expect_end() {
    expect_exit "$1" 60
}

# expect_start_only LAST [TEXT]: the output up to the line LAST, and then TEXT.
expect_start_only() {
    { expected_output | sed "/^$1/q"; [ $# -lt 2 ] || printf '%s\n' "$2"; } |
        cmp - "$headless_out" || fail "standard output differs"
}

# expect_music_error TEXT [LINE...]: the output up to the music's opening, then that, those lines on
# standard error, status 255.
expect_music_error() {
    expect_end 255
    { expected_output | sed '/^Attempting/,$d'; printf 'Attempting to load file...%s\n' "$1"; } |
        cmp - "$headless_out" || fail "standard output differs"
    expect_errors "${@:2}"
}

# plays_and_leaves PROGRAM: in a window, until Escape.
plays_and_leaves() {
    open_in_window "$@"
    wait_for_position 300
    leave 60
}

# expect_show PROGRAM: one that plays as if nothing were wrong.
expect_show() {
    plays_and_leaves "$@"
    expect_output
    expect_errors "$silence"
}

# without_privilege COMMAND...: as somebody who may not read and write what permissions forbid.
without_privilege=()
if [ "$(id -u)" = 0 ]; then
    without_privilege=(setpriv --bounding-set "-dac_override,-dac_read_search")
fi

# expect_forbidden COMMAND...: or skips the case, where nothing is.
expect_forbidden() {
    if ! "${without_privilege[@]}" true || "${without_privilege[@]}" "$@" >/dev/null 2>&1; then
        echo "skipped: here nobody can be kept from reading and writing" >&2
        exit 77
    fi
}
