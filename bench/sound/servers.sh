#!/usr/bin/env bash
# The sound servers to measure on, each with a log of what is heard. Sourced by run.sh.
#
# start_server   the one named by $server; what it lets be heard is written to $sink_log
# end_server     after a moment, in which what was played last is heard
# shellcheck disable=SC2034,SC2154 # variables are shared with run.sh

start_server() {
    sink_log=$headless_dir/sink
    rm -f "$sink_log"
    "start_logged_$server"
}

end_server() {
    sleep 0.3
    "end_logged_$server"
}

# use_server NAME: what the peers call it, and what the player is told to wait for.
use_server() {
    server=$1
    result=()
    case $server in
    pulseaudio)
        mpv_output=pulse
        until_heard=()
        ;;
    pipewire)
        mpv_output=pipewire
        until_heard=("$headless_dir/sink")
        ;;
    esac
    mpv=(mpv --no-config --no-video --ao="$mpv_output" --really-quiet)
}

# The sink begins with two seconds of nothing that it does not take back for a player.
start_logged_pulseaudio() {
    start_sound_server "format=float32le rate=44100 channels=2" --latency-msec=20 \
        "SINK_LOG=$sink_log" "LD_PRELOAD=$PROGRAMS/bench-sink-log.so"
    sleep 2.5
}

end_logged_pulseaudio() {
    headless_stop "$sound_zeros"
    headless_stop "$sound_server"
}

start_logged_pipewire() {
    start_pipewire
    start_tap
}

end_logged_pipewire() {
    end_tap
    end_pipewire
}

# start_tap: from now on what the next player gives to the graph is written to $sink_log.
start_tap() {
    "$PROGRAMS/bench-graph-tap" "$sink_log" &
    tap=$!
    headless_pids+=("$tap")
    headless_wait_until 10 "the tap" [ -e "$sink_log" ]
}

end_tap() {
    headless_stop "$tap"
}

start_load() {
    stress-ng --quiet --cpu 4 >/dev/null 2>&1 &
    load=$!
    headless_pids+=("$load")
}

end_load() {
    headless_stop "$load"
}
