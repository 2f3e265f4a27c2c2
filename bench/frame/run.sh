#!/usr/bin/env bash
# script/bench frame: what a drawn frame of the show costs beside its OpenGL calls alone, and where
# the time from start to first frame goes. Prints the tables of docs/testing.md.
#   --quick   fewer runs, for a first look
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."

rounds=5
starts=20
arguments="$*"
case "$arguments" in
"") ;;
--quick)
    rounds=1
    starts=5
    ;;
*)
    echo "usage: script/bench frame [--quick]" >&2
    exit 2
    ;;
esac

script/setup build headless bench || echo "Measuring with what is there." >&2
command -v glretrace >/dev/null || {
    echo "Cannot measure without glretrace; script/setup bench installs it." >&2
    exit 1
}
# shellcheck source=bench/measure.sh
. bench/measure.sh

# The cost of a frame -----------------------------------------------------------------------------

first_frame=50 # what comes only once is past

# trace NAME: the OpenGL calls of a show, to $headless_dir/NAME.trace; what follows NAME makes it end.
trace() {
    local name=$1
    shift
    headless_forget_windows
    open_in_window apitrace trace -o "$headless_dir/$name.trace" "$PROGRAMS/skovra"
    "$@"
    expect_exit 0 120
}

# replay NAME: sets $frames and $cpu, the processor time in seconds of drawing them and nothing else.
replay() {
    local line
    line=$("$PROGRAMS/bench-measure" glretrace -b "$headless_dir/$1.trace")
    frames=$(sed -n 's/^Rendered \([0-9]*\) frames.*/\1/p' <<<"$line")
    cpu=$(sed -n 's/^cpu=\([0-9.]*\).*/\1/p' <<<"$line")
}

# launch_logged PROGRAM: its boxes are answered at once; what it reached is in $log when it ends.
launch_logged() {
    log=$headless_dir/log
    headless_forget_windows
    FRAME_LOG=$log FRAME_LOG_START=$EPOCHREALTIME LD_PRELOAD=$PROGRAMS/bench-frame-log.so \
        headless_launch "$@"
}

# threads_of PID: name and processor time in ms of each thread.
threads_of() {
    local thread
    for thread in "/proc/$1/task"/*; do
        echo "$(tr ' ' '_' <"$thread/comm") $(cut -d ' ' -f 1 "$thread/schedstat")"
    done | awk '{ sub(/-[0-9]+$/, "", $1); ms[$1] += $2 / 1e6 } END { for (t in ms) print t, ms[t] }'
}

measure_show() {
    launch_logged "$PROGRAMS/skovra"
    sleep 30
    threads_of "$headless_pid" >>"$headless_dir/threads"
    expect_exit 0 120
    awk -v first="frame$first_frame" '
        $1 == first { cpu = $3; number = NR }
        END { print ($3 - cpu) / (NR - number) }' "$log"
}

measure_replay() {
    local whole_frames whole_cpu
    replay whole
    whole_frames=$frames whole_cpu=$cpu
    replay short
    awk "BEGIN { print 1e3 * ($whole_cpu - $cpu) / ($whole_frames - $frames) }"
}

measure_frames() {
    local round show replay
    say "tracing a show"
    trace short headless_key Escape
    trace whole true
    for ((round = 1; round <= rounds; round++)); do
        show=$(measure_show)
        replay=$(measure_replay)
        say "frame, round $round of $rounds: show $show ms, replay $replay ms"
        echo "$show" >>"$headless_dir/show"
        echo "$replay" >>"$headless_dir/replay"
        awk "BEGIN { print $show / $replay }" >>"$headless_dir/ratio"
    done
}

print_frames() {
    printf '| processor time of a drawn frame | aim | figure |\n| --- | --- | --- |\n'
    printf '| the show, ms | – | %.3f |\n' "$(median <"$headless_dir/show")"
    printf '| its OpenGL calls alone (glretrace -b), ms | – | %.3f |\n' "$(median <"$headless_dir/replay")"
    printf '| the show against that | 1.05 | %.3f (%.3f..%.3f) |\n' "$(median <"$headless_dir/ratio")" \
        "$(sort -g "$headless_dir/ratio" | head -n 1)" "$(sort -g "$headless_dir/ratio" | tail -n 1)"
    echo
    echo "The show's threads, share of its processor time:" \
        "$(awk '{ ms[$1] += $2; all += $2 }
            END { for (t in ms) printf "%s %.1f %%\n", t, 100 * ms[t] / all }' "$headless_dir/threads" |
            sort -k 2 -g -r | paste -s -d , | sed 's/,/, /g')."
}

# From start to first frame -----------------------------------------------------------------------

# phases NAME: adds a line of the phases in $log, in ms, to the file of that name.
phases() {
    awk '
        !($1 in at) { at[$1] = $2 }
        $1 == "box" { at[$1] = $2 } # the last of them
        END {
            print at["loaded"], at["glutInit"] - at["loaded"], at["initialised"] - at["glutInit"],
                at["box"] - at["initialised"], at["window"] - at["box"],
                at["loader"] - at["window"], at["frame1"] - at["loader"], at["frame1"]
        }' "$log" >>"$headless_dir/phases.$1"
}

measure_starts() {
    local start
    say "starts"
    for ((start = 1; start <= starts; start++)); do
        launch_logged "$PROGRAMS/skovra"
        headless_wait_active "$title" 60
        headless_key Escape
        expect_exit 0
        phases show
        launch_logged "$PROGRAMS/bench-empty-window"
        expect_exit 0
        phases empty
    done
}

# column NUMBER NAME: the median of that column.
column() {
    cut -d ' ' -f "$1" "$headless_dir/phases.$2" | median
}

print_starts() {
    local names=("libraries loaded" "engine and sound library" "GLUT and the X server"
        "GTK and three boxes, answered when drawn" "window" "settings, pictures, music"
        "first frame drawn" "**start to first frame**") i
    printf '| from start to first frame, ms | Skovra | empty GTK + GLUT program |\n| --- | --- | --- |\n'
    for i in "${!names[@]}"; do
        printf '| %s | %.1f | %.1f |\n' "${names[i]}" "$(column $((i + 1)) show)" \
            "$(column $((i + 1)) empty)"
    done
    printf '| against the empty program (aim 1.5) | %.2f | 1 |\n' \
        "$(awk "BEGIN { print $(column 8 show) / $(column 8 empty) }")"
}

start_display
measure_starts
measure_frames
heading "frame${arguments:+ $arguments}"
print_frames
echo
print_starts
