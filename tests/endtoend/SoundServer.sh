#!/usr/bin/env bash
# The show on a sound server, which may come and go. Argument: the case to run, which ends with the
# server's name.
# shellcheck source=script/lib/show.sh
. "$(dirname "$0")/../../script/lib/show.sh"

start_PulseAudio() { start_sound_server; }

kill_PulseAudio() {
    kill -KILL "$sound_server"
}

start_PipeWire() { start_pipewire; }

# With the daemon go all that are connected to it.
kill_PipeWire() {
    kill -KILL "$pipewire"
    headless_stop "$wireplumber"
    headless_stop "$pipewire_pulse"
    headless_stop "$pipewire_bus"
}

expect_heard() {
    show_is_heard || fail "the show does not play on the sound server"
}

PlaysThrough() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 3000
    expect_heard
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
    expect_equal "standard error" "" "$(cat "$headless_err")"
}

GoesOnWithoutADead() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 5000
    expect_heard
    "kill_$server"
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
    expect_equal "standard error" "skovra-positions: no sound device, playing silently" \
        "$(cat "$headless_err")"
}

IsHeardAgainOnAReturned() {
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 5000
    "kill_$server"
    wait_for_position 8000
    "start_$server"
    headless_wait_until 10 "the show to be heard again" show_is_heard
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
}

# The watch on what the output's callback does is libcallback-watch.so, see its source.
KeepsTheRulesOfACallbackOf() {
    local report=$headless_dir/callbacks
    open_in_window env "LD_PRELOAD=$PROGRAMS/libcallback-watch.so" "CALLBACK_WATCH=$report" \
        "$PROGRAMS/skovra-positions"
    wait_for_position 4000
    expect_heard
    leave
    expect_output
    [ -s "$report" ] || fail "no callback was seen"
    expect_equal "lines of the report" 2 "$(wc -l <"$report")"
    [ "$(sed -n "s/^$library callbacks //p" "$report")" -gt 30 ] ||
        fail "there were only: $(cat "$report")"
}

case $1 in
*PipeWire) server=PipeWire library=pipewire ;;
*) server=PulseAudio library=cubeb ;;
esac
start_display
"start_$server"
"${1%"$server"}"
