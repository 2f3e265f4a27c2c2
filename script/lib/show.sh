#!/usr/bin/env bash
# The show as tests and benchmarks need it: a display, a copy of the program to tamper
# with, the answers to its boxes, and what it must print. Sourced first; $PROGRAMS is the folder of
# the built programs.
set -euo pipefail

# shellcheck source=script/lib/headless.sh
. "$(dirname "${BASH_SOURCE[0]}")/headless.sh"

show_folder=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")

title='"QVZ 02 - Skovra"'

fail() {
    printf 'FAILED: %s\n' "$*" >&2
    for file in "${headless_out:-}" "${headless_err:-}"; do
        if [ -n "$file" ]; then
            printf -- '--- %s\n' "${file##*/}" >&2
            tail -c 2000 "$file" >&2
        fi
    done
    exit 1
}

expect_equal() {
    [ "$2" = "$3" ] || fail "$1: expected '$2', got '$3'"
}

# start_display: a screen with a window manager, as on a desktop, and no sound server.
start_display() {
    headless_begin
    headless_start_xvfb
    headless_start_openbox
    without_sound
}

# Not the user's sound server, and none started on demand.
without_sound() {
    mkdir -p "$headless_dir/runtime"
    chmod 700 "$headless_dir/runtime"
    export XDG_RUNTIME_DIR=$headless_dir/runtime PULSE_SERVER=unix:$headless_dir/runtime/none
    unset PIPEWIRE_REMOTE PIPEWIRE_RUNTIME_DIR
}

sink_is_running() {
    pactl list short sinks | grep -q RUNNING
}

# start_sound_server [SINK [ZEROS [NAME=VALUE...]]]: one of our own, its pid in $sound_server. Zeros
# keep its sink awake, or else it starts late; the pid of what plays them is in $sound_zeros. SINK is
# for arguments of the sink, ZEROS for an option of pacat, the rest for the server's environment.
start_sound_server() {
    local socket=$headless_dir/runtime/pulse-socket
    rm -f "$socket" # of a server that was killed
    env "${@:3}" pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no \
        --disable-shm=yes -L "module-null-sink ${1:-}" \
        -L "module-native-protocol-unix socket=$socket auth-anonymous=1" >"$headless_dir/pulse.log" 2>&1 &
    sound_server=$!
    headless_pids+=("$sound_server")
    headless_wait_until 30 "the sound server" [ -S "$socket" ]
    export PULSE_SERVER=unix:$socket
    pacat ${2:+"$2"} --raw /dev/zero >"$headless_dir/pacat.log" 2>&1 &
    sound_zeros=$!
    headless_pids+=("$sound_zeros")
    headless_wait_until 30 "the sink to run" sink_is_running
}

# start_pipewire: a session of our own, as on a desktop: the daemon, the session manager, and the
# PulseAudio server in front of it, with two sinks without hardware, sink-a (the default) and sink-b.
# The pids are in $pipewire, $wireplumber and $pipewire_pulse. After start_display or without_sound.
start_pipewire() {
    export XDG_CONFIG_HOME=$headless_dir/config XDG_STATE_HOME=$headless_dir/state
    mkdir -p "$XDG_CONFIG_HOME"
    cp -r "$show_folder/pipewire/wireplumber" "$XDG_CONFIG_HOME"
    rm -rf "$XDG_STATE_HOME" # an earlier session's default sink
    rm -f "$XDG_RUNTIME_DIR/bus"
    session_bus=unix:path=$XDG_RUNTIME_DIR/bus
    dbus-daemon --session --nofork --address="$session_bus" >"$headless_dir/bus.log" 2>&1 &
    pipewire_bus=$!
    headless_pids+=("$pipewire_bus")
    headless_wait_until 30 "the session bus" [ -S "$XDG_RUNTIME_DIR/bus" ]
    start_pipewire_daemon
    start_wireplumber
    start_pipewire_pulse
    pipewire_settles
}

# Each of the three can be ended and started again by itself.
start_pipewire_daemon() {
    rm -f "$XDG_RUNTIME_DIR/pipewire-0" # of a daemon that was killed
    DBUS_SESSION_BUS_ADDRESS=$session_bus pipewire -c "$show_folder/pipewire/pipewire.conf" \
        >>"$headless_dir/pipewire.log" 2>&1 &
    pipewire=$!
    headless_pids+=("$pipewire")
    headless_wait_until 30 "PipeWire" [ -S "$XDG_RUNTIME_DIR/pipewire-0" ]
}

start_wireplumber() {
    DBUS_SESSION_BUS_ADDRESS=$session_bus wireplumber >>"$headless_dir/wireplumber.log" 2>&1 &
    wireplumber=$!
    headless_pids+=("$wireplumber")
}

start_pipewire_pulse() {
    rm -f "$XDG_RUNTIME_DIR/pulse/native"
    DBUS_SESSION_BUS_ADDRESS=$session_bus pipewire -c pipewire-pulse.conf \
        >>"$headless_dir/pipewire-pulse.log" 2>&1 &
    pipewire_pulse=$!
    headless_pids+=("$pipewire_pulse")
    headless_wait_until 30 "PipeWire's PulseAudio server" [ -S "$XDG_RUNTIME_DIR/pulse/native" ]
    export PULSE_SERVER=unix:$XDG_RUNTIME_DIR/pulse/native
}

default_sink_is() {
    [ "$(pactl get-default-sink 2>/dev/null)" = "$1" ]
}

# pipewire_settles [SINK]: until all three know their default sink.
pipewire_settles() {
    headless_wait_until 30 "PipeWire's sinks" default_sink_is "${1:-sink-a}"
}

# set_graph QUANTUM RATE: forces the frames in a cycle and their rate; 0: as PipeWire likes.
set_graph() {
    pw-metadata -n settings 0 clock.force-quantum "$1" >/dev/null
    pw-metadata -n settings 0 clock.force-rate "$2" >/dev/null
}

end_pipewire() {
    headless_stop "$pipewire_pulse"
    headless_stop "$wireplumber"
    headless_stop "$pipewire"
    headless_stop "$pipewire_bus"
    without_sound
}

show_is_heard() {
    pactl list sink-inputs | grep -q 'application.name = "Skovra"'
}

# copy_program: a copy of program and resources to tamper with, in $copy.
copy_program() {
    copy=$headless_dir/copy
    mkdir "$copy"
    cp -r "$PROGRAMS/skovra" "$PROGRAMS/skovra-positions" "$PROGRAMS/resources" "$copy"
}

# paint_pictures: plain colours into the copy, upper and lower half different, so that a pixel tells
# them apart.
paint_pictures() {
    convert -size 64x32 xc:'#c02020' \( -size 64x32 xc:'#601010' \) -append "$copy/resources/skovr.png"
    convert -size 64x32 xc:'#2020c0' \( -size 64x32 xc:'#101060' \) -append \
        "$copy/resources/credits.png"
}

# launch PROGRAM: starts it, with its positions in $positions if it is skovra-positions.
launch() {
    positions=$headless_dir/positions
    : >"$positions"
    POSITION_LOG=$positions headless_launch "$@"
}

# answer KEY [SECONDS]: Return for full screen, Escape for a window; then the show's display is up. The
# first box comes within so many seconds.
answer() {
    headless_wait_active "$title" "${2:-60}" && headless_key Return &&
        headless_wait_active "$title" && headless_key "$1" &&
        headless_wait_active "$title" && headless_key Return
}

# press_button QUARTER: clicks at the lower edge of the box waited for last, where its buttons are,
# so many quarters of its width from the left.
press_button() {
    local geometry
    read -r -a geometry <<<"$(headless_geometry "$headless_window")"
    headless_click "$headless_window" $((geometry[2] * $1 / 4)) $((geometry[3] - 20))
}

open_in_window() {
    launch "$@"
    answer Escape
    headless_wait_active "$title"
}

# The full-screen display's name is freeglut's affair where it is in game mode.
open_full_screen() {
    launch "$@"
    answer Return
}

has_read_position() {
    [ "$(tail -n 2 "$positions" | head -n 1 | cut -d ' ' -f 1)" -ge "$1" ] 2>/dev/null
}

# wait_for_position MS: until the show has read that music position or a later one.
wait_for_position() {
    headless_wait_until $((30 + $1 / 500)) "music position $1" has_read_position "$1"
}

expect_exit() {
    local status=0
    headless_wait_exit "$headless_pid" "${2:-20}" || status=$?
    expect_equal "exit status" "$1" "$status"
}

# leave [SECONDS]: by Escape; it ends within so many.
leave() {
    headless_key Escape
    expect_exit 0 "${1:-20}"
}

# show_processes: all that still run in a show's environment, which reaches whom the show starts.
show_processes() {
    grep -lzFx "POSITION_LOG=$positions" /proc/[0-9]*/environ 2>/dev/null || :
}

# What the show prints up to its first frame. $1: warnings of missing pictures.
expected_output() {
    printf '%s\n' \
        '"QVZ 02 - Skovra"' \
        'Tarvelund 2006 - Halvmork.' \
        'Using DemoEngine(tm) version: 6' \
        'Settings:' \
        ' Sound : 1' \
        '' \
        'BasicInit - Initiated' \
        'BasicInit - Completed' \
        'Attempting to load file...OK' \
        'FMOD - Initiated' \
        'Configuring FMOD' \
        'Setting OpenGL settings' \
        'Loading Textures...'
    printf '%s' "${1:-}"
}

# expect_output [WARNINGS]: that text to the byte, then one digit 1 a frame and nothing else.
expect_output() {
    local expected=$headless_dir/expected size rest
    if [ $# -gt 0 ]; then
        expected_output "$1"$'\n' >"$expected"
    else
        expected_output >"$expected"
    fi
    size=$(stat -c %s "$expected")
    cmp -n "$size" "$expected" "$headless_out" || fail "standard output differs"
    rest=$(tail -c "+$((size + 1))" "$headless_out" | od -v -An -c | tr -d ' \n')
    [[ $rest =~ ^1+$ ]] || fail "standard output goes on with '${rest:0:80}'"
}

# colour_at FILE X Y: "red,green,blue" of a pixel, 0..255.
colour_at() {
    convert "$1" -depth 8 -format "%[pixel:p{$2,$3}]" info: | sed 's/^s*rgba\{0,1\}(\(.*\))$/\1/'
}

# expect_window WINDOW: the show's window where it belongs; a window manager's frame stands there.
expect_window() {
    local extents x y width height
    extents=$(xprop -id "$1" _NET_FRAME_EXTENTS | sed -n 's/.*= \([0-9]*\), [0-9]*, \([0-9]*\),.*/\1 \2/p')
    read -r x y width height <<<"$(headless_geometry "$1")"
    expect_equal "window geometry within frame of $extents" "200 200 1024 768" \
        "$((x - ${extents% *})) $((y - ${extents#* })) $width $height"
}

# The frame loop leaves when it finds itself above the end, and no clock but the music's moves it. A
# frame that begins before the end may come to it in the two positions that it reads for its scene.
expect_positions_of_a_whole_show() {
    awk '
        NR > 1 && $1 < last { print "stepped back from " last " to " $1; bad = 1 }
        $1 > 33000 && ++beyond > 3 { print "went on at " $1; bad = 1 }
        NR == 1 { started = $2 - $1 }
        { last = $1; drift = $2 - started - $1 }
        END {
            if (last <= 33000) { print "ended at " last; bad = 1 }
            if (drift > 500 || drift < -500) { print "ran " drift " ms off real time"; bad = 1 }
            exit bad
        }' "$positions" >&2 || fail "positions read by the show"
}
