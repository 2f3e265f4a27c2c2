#!/usr/bin/env bash
# The show on a sound server, which may come and go. Argument: the case to run.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

PlaysThroughASoundServer() {
    start_display
    start_sound_server
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 3000
    show_is_heard || fail "the show does not play on the sound server"
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
    expect_equal "standard error" "" "$(cat "$headless_err")"
}

GoesOnWithoutAServerThatDies() {
    start_display
    start_sound_server
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 5000
    show_is_heard || fail "the show does not play on the sound server"
    kill -KILL "$sound_server"
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
    expect_equal "standard error" "skovra: no sound device, playing silently" \
        "$(cat "$headless_err")"
}

IsHeardAgainOnAServerThatComesBack() {
    start_display
    start_sound_server
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 5000
    kill -KILL "$sound_server"
    wait_for_position 8000
    start_sound_server
    headless_wait_until 10 "the show to be heard again" show_is_heard
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
}

# The watch on what the output's callback does is libcallback-watch.so, see its source.
CallbackKeepsItsRules() {
    local report
    start_display
    start_sound_server
    report=$headless_dir/callbacks
    open_in_window env "LD_PRELOAD=$PROGRAMS/libcallback-watch.so" "CALLBACK_WATCH=$report" \
        "$PROGRAMS/skovra-positions"
    wait_for_position 4000
    show_is_heard || fail "the show does not play on the sound server"
    headless_key Escape
    expect_exit 0
    expect_output
    [ -s "$report" ] || fail "no callback was seen"
    expect_equal "lines of the report" 1 "$(wc -l <"$report")"
    [ "$(sed -n 's/^callbacks //p' "$report")" -gt 30 ] || fail "there were only: $(cat "$report")"
}

"$1"
