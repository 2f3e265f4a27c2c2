#!/usr/bin/env bash
# The position on PipeWire, by quantum, rate of the graph and load; several starts each. Sourced by
# run.sh.
# shellcheck disable=SC2034,SC2154 # variables are shared with run.sh

# play_starts NAME [at-once]: that many starts in the session that runs, as result[NAME.playhead...]
# and result[NAME.spectrum...]. At once: the music does not wait until the player is listened to.
play_starts() {
    local name=$1 answers i positions=() spectra=() until_heard
    for ((i = 1; i <= starts; i++)); do
        answers=$headless_dir/answers.$i
        sink_log=$headless_dir/sink.$i
        rm -f "$sink_log"
        until_heard=("$sink_log")
        [ "${2:-}" != at-once ] || until_heard=()
        start_tap
        "$PROGRAMS/bench-player" poll "$short_music" "$answers" "${until_heard[@]}"
        sleep 0.3
        end_tap
        if [ ! -s "$sink_log" ]; then
            say "nothing was heard"
            continue
        fi
        positions+=("$sink_log" "$answers.playhead")
        spectra+=("$sink_log" "$answers.spectrum")
    done
    [ ${#positions[@]} -gt 0 ] || return 0
    keep "$name.playhead" "$("$PROGRAMS/bench-truth" position "$short_music" "${positions[@]}")"
    keep "$name.spectrum" "$("$PROGRAMS/bench-truth" position "$short_music" "${spectra[@]}")"
    rm -f "$headless_dir"/sink.*
}

# each_graph COMMAND...: for each quantum and rate, with those as its last arguments.
each_graph() {
    local rate quantum
    for rate in 44100 48000; do
        for quantum in 64 256 1024 2048 0; do
            "$@" "$quantum" "$rate"
        done
    done
}

measure_graph() {
    say "pipewire: $1, quantum $2, rate $3"
    set_graph "$2" "$3"
    play_starts "$1.$2.$3"
}

measure_at_once() {
    say "pipewire: $1, played at once"
    set_graph 0 0
    play_starts "$1.at-once" at-once
}

measure_through_pulse() {
    say "pipewire: $1, through pipewire-pulse"
    set_graph 0 0
    SKOVRA_SOUND=pulse play_starts "$1.pulse"
}

measure_quanta() {
    local when
    short_music=$headless_dir/short.mp3
    make_soft_music "$short_music" 6
    start_pipewire
    for when in idle busy; do
        [ "$when" = idle ] || start_load
        each_graph measure_graph "$when"
        measure_at_once "$when"
        measure_through_pulse "$when"
    done
    end_load
    set_graph 0 0
    end_pipewire
}

quantum_row() {
    local name=$1
    shift
    row "$@" "$(figure "$spread" "$name".playhead.{median,p1,p99})" \
        "$(figure %+.2f "$name.playhead.worstMedian")" "$(figure %d "$name.playhead.back")" \
        "$(figure '%.1f %%' "$name.playhead.same")" \
        "$(figure "$spread" "$name".spectrum.{median,p1,p99})" \
        "$(figure %d "$name.playhead.lost")" "$(figure %d "$name.playhead.unseen")" \
        "$(figure %+.2f "$name.playhead.beginning")"
}

kilohertz() {
    LC_ALL=C awk "BEGIN { print $1 / 1000 }"
}

graph_row() {
    local when=$1 quantum=$2 rate=$3
    quantum_row "$when.$quantum.$rate" "${quantum/#0/default}" "$(kilohertz "$rate")" "$when"
}

print_quanta() {
    local when
    echo "### Position on PipeWire, of $starts starts in each line; ms"
    echo
    row quantum "graph, kHz" load "play head off: median (p1..p99)" "worst start's median" \
        "went back" "same 1 ms later" "spectrum: median (p1..p99)" "frames lost at the start" \
        "starts not seen" "worst of the first 200 ms"
    row --- --- --- --- --- --- --- --- --- --- ---
    for when in idle busy; do
        each_graph graph_row "$when"
        quantum_row "$when.at-once" "default, played at once" 44.1 "$when"
        quantum_row "$when.pulse" "default, through pipewire-pulse" 44.1 "$when"
    done
    echo
}
