#!/usr/bin/env bash
# What becomes of sound and position on PipeWire when something changes while music plays. Sourced
# by run.sh.
# shellcheck disable=SC2034,SC2154 # variables are shared with run.sh

# event NAME [VALUE]: notes that it happens now, see Findings.h.
event() {
    echo "$1 $("$PROGRAMS/bench-truth" now)${2:+ $2}" >>"$events"
}

# The changes: each notes when it begins, and when all is there again ------------------------------

switch_sink() {
    event change
    pactl set-default-sink sink-b
    event back
}

suspend_sink() {
    event change
    pactl suspend-sink sink-a 1
    sleep 2
    pactl suspend-sink sink-a 0
    event back
}

force_quantum() {
    event change
    set_graph 256 0
    sleep 1
    set_graph 2048 0
    sleep 1
    set_graph 64 0
    event back
}

force_rate() {
    event change
    set_graph 0 48000
    event back
}

# end_part PID SIGNAL: without a word from the shell.
end_part() {
    kill "-$2" "$1"
    headless_wait_exit "$1" 2>/dev/null || :
}

# With the daemon the session manager ends.
start_pipewire_again() {
    headless_stop "$wireplumber"
    start_pipewire_daemon
    event back
    start_wireplumber
}

restart_daemon() {
    event change
    end_part "$pipewire" TERM
    start_pipewire_again
}

kill_daemon() {
    event change
    end_part "$pipewire" KILL
    sleep 1
    start_pipewire_again
}

# A desktop's sinks are its session manager's: they go with it, and come again.
destroy_sinks() {
    pw-cli destroy sink-a
    pw-cli destroy sink-b
}

create_sink() {
    pw-cli create-node adapter "{ factory.name = support.null-audio-sink node.name = $1 \
        media.class = Audio/Sink audio.position = \"FL,FR\" object.linger = true \
        priority.session = $2 }"
}

restart_manager() {
    event change
    end_part "$wireplumber" TERM
    destroy_sinks
    start_manager_again
}

kill_manager() {
    event change
    end_part "$wireplumber" KILL
    destroy_sinks
    sleep 1
    start_manager_again
}

start_manager_again() {
    start_wireplumber
    create_sink sink-a 20000
    create_sink sink-b 19000
    event back
}

restart_pulse() {
    event change
    end_part "$pipewire_pulse" TERM
    start_pipewire_pulse
    event back
}

kill_pulse() {
    event change
    end_part "$pipewire_pulse" KILL
    sleep 1
    start_pipewire_pulse
    event back
}

# stop_part PID
stop_part() {
    event change
    kill -STOP "$1"
    sleep 5
    kill -CONT "$1"
    event back
}

stop_daemon() {
    stop_part "$pipewire"
}

stop_manager() {
    stop_part "$wireplumber"
}

stop_pulse() {
    stop_part "$pipewire_pulse"
}

late_sink_is_default() {
    default_sink_is late-sink
}

# start_late_sink MS...: the default sink says that it plays so late, after each next_latency the
# next; noted as the truth before the player starts.
start_late_sink() {
    latencies=("$@")
    "$PROGRAMS/bench-late-sink" "$@" &
    late_sink=$!
    headless_pids+=("$late_sink")
    headless_wait_until 10 "the late sink" sink_exists late-sink
    pactl set-default-sink late-sink
    headless_wait_until 10 "the late sink to be the default one" late_sink_is_default
    event latency "$1"
}

sink_exists() {
    pactl list short sinks | grep -qw "$1"
}

stay_late() {
    event change
    event back
}

next_latency() {
    latencies=("${latencies[@]:1}")
    event change
    kill -USR1 "$late_sink"
    event latency "${latencies[0]}"
    event back
}

# Measuring ---------------------------------------------------------------------------------------

# measure_change NAME MUSIC COMMAND...: once for each value of SKOVRA_SOUND.
measure_change() {
    local name=$1 music=$2 path
    shift 2
    for path in "${paths[@]}"; do
        say "pipewire: change, $name, $path"
        play_change "$name.$path" "$@"
    done
}

# play_change NAME COMMAND...: with $music; before it the late sink, if $late has latencies.
play_change() {
    local name=$1 answers=$headless_dir/answers player
    shift
    events=$headless_dir/events
    rm -f "$events"
    start_pipewire
    [ ${#late[@]} -eq 0 ] || start_late_sink "${late[@]}"
    sink_log=$headless_dir/sink
    rm -f "$sink_log"
    start_tap
    SKOVRA_SOUND=${name##*.} "$PROGRAMS/bench-player" poll "$music" "$answers" "$sink_log" \
        2>>"$headless_dir/player.log" &
    player=$!
    headless_pids+=("$player")
    headless_wait_until 20 "sound" [ -s "$sink_log" ]
    sleep 4
    "$@"
    if headless_wait_exit "$player" 60; then
        sleep 0.3
        end_tap
        keep "change.$name" \
            "$("$PROGRAMS/bench-truth" change "$music" "$sink_log" "$answers.playhead" "$events")"
    else
        say "the player failed"
        headless_stop "$player"
        end_tap
    fi
    [ ${#late[@]} -eq 0 ] || headless_stop "$late_sink"
    end_pipewire
}

measure_changes() {
    local short=$headless_dir/change.mp3 long=$headless_dir/long-change.mp3 late=()
    make_soft_music "$short" 12
    make_soft_music "$long" 17
    measure_change switch "$short" switch_sink
    measure_change suspend "$short" suspend_sink
    measure_change quantum "$short" force_quantum
    measure_change rate "$short" force_rate
    measure_change pipewire.restarted "$short" restart_daemon
    measure_change pipewire.stopped "$long" stop_daemon
    measure_change pipewire.killed "$short" kill_daemon
    measure_change wireplumber.restarted "$short" restart_manager
    measure_change wireplumber.stopped "$long" stop_manager
    measure_change wireplumber.killed "$short" kill_manager
    measure_change pipewire_pulse.restarted "$short" restart_pulse
    measure_change pipewire_pulse.stopped "$long" stop_pulse
    measure_change pipewire_pulse.killed "$short" kill_pulse
    for late in 100 200 300; do
        late=("$late")
        measure_change "late.${late[0]}" "$short" stay_late
    done
    late=(100 300)
    measure_change late.grows "$short" next_latency
    late=(300 100)
    measure_change late.shrinks "$short" next_latency
}

# The table ---------------------------------------------------------------------------------------

change_row() {
    local title=$1 path=$2 name=change.$3.$2
    row "$title" "$path" "$(figure %d "$name.resumed")" "$(figure %.0f "$name.silent")" \
        "$(figure '%.0f; %.0f' "$name".{missing,repeated})" "$(figure %d "$name.off")" \
        "$(figure "$spread" "$name".{median,p1,p99})" \
        "$(figure '%+.2f..%+.2f' "$name".{least,most})" "$(figure %d "$name.back")"
}

change_rows() {
    local path
    for path in "${paths[@]}"; do
        change_row "$1" "$path" "$2"
    done
}

print_changes() {
    local part
    echo "### Changes on PipeWire while music plays; ms"
    echo
    row change SKOVRA_SOUND "sound again, after the server" "silent" "music missing; repeated" \
        "last off by more than 1, after the server" \
        "position from 2 s on: median (p1..p99)" "least..most" "went back"
    row --- --- --- --- --- --- --- --- ---
    change_rows "default sink switched" switch
    change_rows "sink suspended for 2 s" suspend
    change_rows "quantum forced to 256, 2048, 64" quantum
    change_rows "graph forced to 48 kHz" rate
    for part in pipewire wireplumber pipewire_pulse; do
        change_rows "${part/_/-} restarted" "$part.restarted"
        change_rows "${part/_/-} stopped for 5 s" "$part.stopped"
        change_rows "${part/_/-} killed, there again after 1 s" "$part.killed"
    done
    change_rows "sink 100 ms late" late.100
    change_rows "sink 200 ms late" late.200
    change_rows "sink 300 ms late" late.300
    change_rows "sink's 100 ms become 300" late.grows
    change_rows "sink's 300 ms become 100" late.shrinks
    echo
}
