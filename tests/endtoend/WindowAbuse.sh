#!/usr/bin/env bash
# The show in a window that is not left in peace. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

seed=${WINDOW_ABUSE_SEED:-20061}
batches=10
resizes=100 # in each

last_viewport() {
    grep '^viewport ' "$frames" | tail -n 1
}

# expect_end_of_show: it has come to the position at which it ends by itself.
expect_end_of_show() {
    local last
    last=$(tail -n 1 "$positions" | cut -d ' ' -f 1)
    [ "$last" -gt 33000 ] || fail "the show ended at position $last"
}

has_drawn_in() {
    [ "$(last_viewport)" = "viewport $1" ]
}

expect_drawn_in() {
    headless_wait_until 60 "a frame in the window's size, $1" has_drawn_in "$1" ||
        fail "the last is $(last_viewport)"
}

AThousandSizesLeaveTheShowAsItIs() {
    local batch report size had=0
    echo "seed $seed"
    frames=$headless_dir/frames
    open_in_window env "LD_PRELOAD=$PROGRAMS/libwindow-abuse-watch.so" "FRAME_WATCH=$frames" \
        "$PROGRAMS/skovra-positions"
    for ((batch = 1; batch <= batches; batch++)); do
        wait_for_position $((batch * 1500))
        report=$(timeout 120 "$PROGRAMS/abuse-window" "$headless_window" $((seed + batch)) $resizes) ||
            fail "batch $batch of the resizes"
        had=$((had + $(cut -d ' ' -f 2 <<<"$report")))
        size=${report#* last }
        ((batch % 5 != 0)) || expect_drawn_in "$size"
    done
    expect_equal "size of the window" "$size" \
        "$(headless_geometry "$headless_window" | cut -d ' ' -f 3-)"
    echo "done at position $(tail -n 2 "$positions" | head -n 1 | cut -d ' ' -f 1)"
    expect_exit 0 120
    expect_output
    expect_end_of_show
    expect_equal "last viewport" "viewport $size" "$(last_viewport)"
    expect_equal "errors of OpenGL" "" "$(grep '^error' "$frames" | sort | uniq -c)"
    ((had * 2 > batches * resizes)) || fail "the window had only $had sizes"
    echo "$had sizes, frames drawn in $(grep -c '^viewport' "$frames") of them"
}

start_display
"$1"
