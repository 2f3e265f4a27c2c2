#!/usr/bin/env bash
# The examples of docs/engine.md, run. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

draws_something() {
    [ "$(import -window "$headless_window" png:- | identify -format %k -)" -gt 1 ]
}

EachDrawsSomething() {
    local name names document
    document=$(dirname "$0")/../../docs/engine.md
    mapfile -t names < <(sed -n 's/^<!-- example: \(.*\) -->$/\1/p' "$document")
    ((${#names[@]} > 10)) || fail "the document has lost its examples"
    for name in "${names[@]}"; do
        [ "$name" != AlertBox ] || continue # asks instead of drawing: the next case
        headless_launch "$PROGRAMS/engine-examples" "$name"
        headless_wait_active "My demo"
        headless_wait_until 20 "example $name to draw" draws_something
        leave
        headless_forget_windows
    done
}

AlertBoxExampleAsks() {
    headless_launch "$PROGRAMS/engine-examples" AlertBox
    headless_wait_active "My demo"
    headless_key Return
    headless_wait_active "My demo"
    headless_key Return
    expect_exit 0
    expect_equal "answer" "full screen" "$(cat "$headless_out")"
}

start_display
"$1"
