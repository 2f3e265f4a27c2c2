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

# Of the next two PART is the name of the variable that has its pid: pipewire, wireplumber or
# pipewire_pulse.

# replace PART SIGNAL SECONDS: ends it by that signal, and starts it again so much later.
replace() {
    event change
    kill "-$2" "${!1}"
    headless_wait_exit "${!1}" 2>/dev/null || : # without a word from the shell
    [ "$1" != wireplumber ] || destroy_sinks
    sleep "$3"
    "start_$1_again"
}

# With the daemon the session manager ends.
start_pipewire_again() {
    headless_stop "$wireplumber"
    start_pipewire_daemon
    event back
    start_wireplumber
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

start_wireplumber_again() {
    start_wireplumber
    create_sink sink-a 20000
    create_sink sink-b 19000
    event back
}

start_pipewire_pulse_again() {
    start_pipewire_pulse
    event back
}

# hold PART: has it hang for a while.
hold() {
    event change
    kill -STOP "${!1}"
    sleep 5
    kill -CONT "${!1}"
    event back
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
    local short=$headless_dir/change.mp3 long=$headless_dir/long-change.mp3 late=() part
    make_soft_music "$short" 12
    make_soft_music "$long" 17
    measure_change switch "$short" switch_sink
    measure_change suspend "$short" suspend_sink
    measure_change quantum "$short" force_quantum
    measure_change rate "$short" force_rate
    for part in pipewire wireplumber pipewire_pulse; do
        measure_change "$part.restarted" "$short" replace "$part" TERM 0
        measure_change "$part.stopped" "$long" hold "$part"
        measure_change "$part.killed" "$short" replace "$part" KILL 1
    done
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
    local part late
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
    for late in 100 200 300; do
        change_rows "sink $late ms late" "late.$late"
    done
    change_rows "sink's 100 ms become 300" late.grows
    change_rows "sink's 300 ms become 100" late.shrinks
    echo
}
