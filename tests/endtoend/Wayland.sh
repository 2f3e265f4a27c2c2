#!/usr/bin/env bash
# The show on Wayland compositors, by their Xwayland. Argument: the case to run.
# shellcheck source=tests/endtoend/failure.sh
. "$(dirname "$0")/failure.sh"
# shellcheck source=script/lib/wayland.sh
. "$(dirname "$0")/../../script/lib/wayland.sh"
drop_root "$0" "$@"

# begin COMPOSITOR [OUTPUTS [SCALE]]: with a window of somebody else in front.
begin() {
    headless_begin
    without_sound
    start_compositor "$@"
    xev -name neighbour >"$headless_dir/xev.log" 2>&1 &
    headless_pids+=("$!")
    # Where the pointer is, new windows open, and the keyboard goes back to one of those there.
    [ -z "${outer_display:-}" ] || DISPLAY=$outer_display xdotool mousemove 600 600
    headless_wait_active neighbour
    neighbour=$headless_window
    modes_before=$(xrandr --query)
    copy_program
    paint_pictures
}

has_the_keyboard() {
    [ "$(xdotool getactivewindow 2>/dev/null)" = "$1" ]
}

# leave_as_before: by Escape, and all is as it was.
leave_as_before() {
    leave 60
    expect_output
    expect_errors "$silence"
    headless_wait_until 30 "the neighbour to have the keyboard again" has_the_keyboard "$neighbour"
    expect_equal "modes afterwards" "$modes_before" "$(xrandr --query)"
}

# has_shown PERCENT: at least that much of an output has the colours of the pictures.
has_shown() {
    local shot=$headless_dir/shot.png
    compositor_screenshot "$shot" || return 1
    shown=$(convert "$shot" -alpha off -fill black -opaque white -fill white -opaque '#c02020' \
        -opaque '#601010' -opaque '#2020c0' -opaque '#101060' -fill black +opaque white \
        -format '%[fx:int(mean*w*h*100/1280/1024)]' info:)
    [ "$shown" -ge "$1" ]
}

# expect_shown PERCENT: while the show has pictures. Being looked at holds a nested compositor up,
# for seconds on a busy machine: it gets time in between.
expect_shown() {
    local position shown=0
    for position in 300 1000 3000 6000 12000 20000; do
        wait_for_position "$position"
        ! has_shown "$1" || return 0
    done
    fail "only $shown % of the output show the picture"
}

is_full_screen() {
    xprop -id "$1" _NET_WM_STATE | grep -q _NET_WM_STATE_FULLSCREEN
}

# in_a_window COMPOSITOR
in_a_window() {
    begin "$1"
    open_in_window "$copy/skovra-positions"
    expect_shown 30
    ! is_full_screen "$headless_window" || fail "the window is full screen"
    leave_as_before
}

# in_full_screen COMPOSITOR [OUTPUTS [SCALE]]
in_full_screen() {
    local scale=${3:-1}
    begin "$@"
    open_full_screen "$copy/skovra-positions"
    headless_wait_active Skovra
    headless_wait_until 20 "full screen" is_full_screen "$headless_window"
    expect_shown 60
    expect_equal "size of the display" "$((1280 / scale)) $((1024 / scale))" \
        "$(headless_geometry "$headless_window" | cut -d ' ' -f 3-)"
    leave_as_before
}

SwayWindow() { in_a_window sway; }
SwayFullScreen() { in_full_screen sway; }
SwayFullScreenOnTwoOutputs() { in_full_screen sway 2; }
SwayFullScreenOfScaleTwo() { in_full_screen sway 1 2; }
WestonWindow() { in_a_window weston; }
WestonFullScreen() { in_full_screen weston; }
WestonFullScreenOnTwoOutputs() { in_full_screen weston 2; }
KWinWindow() { in_a_window kwin; }
KWinFullScreen() { in_full_screen kwin; }
KWinFullScreenOnTwoOutputs() { in_full_screen kwin 2; }
MutterWindow() { in_a_window mutter; }
MutterFullScreen() { in_full_screen mutter; }

# Two outputs of it keep the X server that it is nested in too busy to be looked at.
MutterFullScreenOnTwoOutputs() {
    # shellcheck disable=SC2317
    expect_shown() {
        wait_for_position 300
    }
    in_full_screen mutter 2
}

is_focused() {
    swaymsg -q "[con_id=__focused__ title=\"^$1\$\"] nop" 2>/dev/null
}

MissingXwaylandIsTold() {
    local key
    headless_begin
    without_sound
    start_sway_without_xwayland
    for key in Return Escape; do
        launch "$PROGRAMS/skovra"
        headless_wait_until 60 "the box" is_focused "No X display"
        headless_key "$key"
        expect_end 1
        expect_start_only 'FMOD - Initiated'
        expect_errors 'skovra: no X display answers; on Wayland it comes with Xwayland' \
            "freeglut ($PROGRAMS/skovra): failed to open display ''"
    done
}

"$1"
