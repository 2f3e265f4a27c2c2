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

# open_show: in a small window, which leaves the processors to the sound.
open_show() {
    open_in_window "$PROGRAMS/skovra-positions"
    xdotool windowsize "$headless_window" 160 120
}

PlaysThrough() {
    open_show
    wait_for_position 3000
    expect_heard
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
    expect_equal "standard error" "" "$(cat "$headless_err")"
}

GoesOnWithoutADead() {
    open_show
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
    open_show
    wait_for_position 5000
    "kill_$server"
    wait_for_position 8000
    "start_$server"
    headless_wait_until 10 "the show to be heard again" show_is_heard
    expect_exit 0 90
    expect_output
    expect_positions_of_a_whole_show
}

# open_with_jack SERVER: with a library of JACK's that hangs and the server "default", see
# HangingJack.cpp, where the environment names SERVER.
open_with_jack() {
    mkdir "$headless_dir/jack"
    export PULSE_SERVER=unix:$headless_dir/runtime/pulse-socket # where it will be
    open_in_window env "LD_PRELOAD=$PROGRAMS/libhanging-jack.so" "HANGING_JACK=$headless_dir/jack" \
        "JACK_DEFAULT_SERVER=$1" "$PROGRAMS/skovra-positions"
}

IsHeardBesideAHangingJackOnALate() {
    open_with_jack default
    headless_wait_until 20 "JACK to hang" [ -e "$headless_dir/jack/entered" ]
    "start_$server"
    headless_wait_until 15 "the show to be heard" show_is_heard
    leave
    expect_output
}

# cubeb would try it where there is no PulseAudio.
CallsNoJackInPlaceOf() {
    open_with_jack another
    wait_for_position 1500
    [ ! -e "$headless_dir/jack/entered" ] || fail "JACK's library was called without its server"
    leave
    expect_output
}

# memory_files: shared memory that the show has open, and that others could open by name.
memory_files() {
    { cat "/proc/$headless_pid/maps" && readlink "/proc/$headless_pid/fd/"*; } |
        grep -o '/dev/shm/.*' | grep -v ' (deleted)$' | sort -u || :
}

# has_no_segments: shared memory that the show has made, and that has a number. The X server lets go
# of it in its own good time.
has_no_segments() {
    awk -v show="$headless_pid" '$5 == show { found = 1 } END { exit found }' /proc/sysvipc/shm
}

# expect_no_memory_left WHEN: by a show that is killed then.
expect_no_memory_left() {
    local name
    memory_files >"$headless_dir/memory"
    kill -KILL "$headless_pid"
    expect_exit 137
    while read -r name; do
        [ ! -e "$name" ] || fail "$name is left by a show that was killed $1"
    done <"$headless_dir/memory"
    headless_wait_until 10 "the show's shared memory to go" has_no_segments ||
        fail "segments are left by a show that was killed $1"
}

LeavesNoSharedMemoryWhenKilledOn() {
    launch "$PROGRAMS/skovra-positions"
    headless_wait_active "$title" 60
    headless_wait_until 20 "the show's stream" show_is_heard
    expect_no_memory_left "while a box is shown"
    headless_forget_windows
    open_in_window "$PROGRAMS/skovra-positions"
    wait_for_position 2000
    expect_heard
    expect_no_memory_left "while it plays"
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
[[ $1 = *OnALate* || $1 = *InPlaceOf* ]] || "start_$server"
"${1%"$server"}"
